// A catalog of texts in one language, as msgfmt writes it (".mo").
//
// The C library reads catalogs too, but only for a user whose locale is generated on the machine.
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
    /// Nothing where `file` is no such catalog, whole and in order. Any thread.
    static std::optional<TranslationCatalog> parse(Data file);

    /// The text for `key`, an English wording; nothing where there is none, or an empty one. The views are the
    /// catalog's. Any thread.
    std::optional<std::string_view> find(std::string_view key) const;

    /// The same, in the form that goes with `count` by the catalog's rule for plurals, or where that is none, by
    /// "n != 1". A rule that asks for more forms than there are gets the last.
    std::optional<std::string_view> find(std::string_view key, unsigned long count) const;

  private:
    struct Entry {
        std::string_view key;
        /// At least one, each but the last ended by a NUL.
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
