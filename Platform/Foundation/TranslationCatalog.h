// A message catalog of one language, as msgfmt writes it (".mo").
//
// The C library reads catalogs only if the user's locale is generated on the machine. Newer versions treat C.UTF-8 like
// C and ignore LANGUAGE there.
//
// Source: the GNU gettext manual, "The Format of GNU MO Files". The file's numbers are little-endian, which is what
// msgfmt writes on every machine; texts are UTF-8; its hash table is not used.
#pragma once

#include "Platform/Foundation/Data.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

class TranslationCatalog {
  public:
    /// Returns nothing if `file` is not a whole and sorted catalog. Any thread.
    static std::optional<TranslationCatalog> parse(Data file);

    /// Returns the text for `key`, an English wording; nothing if it is missing or empty. The view borrows from the
    /// catalog. Any thread.
    std::optional<std::string_view> find(std::string_view key) const;

    /// The same, in the form for `count` by the catalog's plural rule, or by "n != 1" if that rule is invalid. Returns
    /// the last form if the rule's value is too large.
    std::optional<std::string_view> find(std::string_view key, unsigned long count) const;

  private:
    struct Entry {
        std::string_view key;
        /// One form or more, separated by NULs.
        std::string_view forms;
    };

    explicit TranslationCatalog(Data file) : file_(std::move(file)) {}
    const Entry* entry(std::string_view key) const;

    Data file_;
    /// By keys, ascending.
    std::vector<Entry> entries_;
    std::string_view pluralRule_;
};

} // namespace platform
