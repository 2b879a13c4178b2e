// One of the library's files: a property list whose root is an array of dictionaries, its records.
//
// Reading never fails outward. A file that cannot be read, or is something else, has no records, which is logged:
// "Could not read …" for debugging when there is no such file to be read, "Could not parse …" as an error when it is
// something else. A record that makes no item is passed over in silence.
#pragma once

#include "Extension/Shared/Library.h"
#include "Platform/PropertyList/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace foliovault {

class PropertyListFile {
  public:
    /// `category`, a text that lives on, is the log category of the store that reads the file.
    PropertyListFile(const Library& library, const platform::URL& location, std::string_view category)
        : path_(location.path()), home_(library.paths.realHome), category_(category), files_(library.files),
          log_(library.log) {}

    /// What a host follows to learn of changes: the file's path below the user's home.
    std::vector<std::string> watches() const;

    /// The file as it is now, its root an array of dictionaries.
    std::optional<platform::PropertyList> load() const;

    /// Calls `visit(record)` with every record of the file as it is now, in order.
    template <class Visit>
    void forEachRecord(Visit visit) const {
        if (const auto list = load()) {
            list->root().forEachElement([&visit](const platform::PropertyListValue& record) {
                visit(record);
                return true;
            });
        }
    }

    /// What `convert(record)`, which answers an optional item, makes of the records, in order.
    template <class Convert>
    auto convertEach(Convert convert) const {
        using Item = typename std::invoke_result_t<Convert, const platform::PropertyListValue&>::value_type;
        std::vector<Item> items;
        forEachRecord([&](const platform::PropertyListValue& record) {
            if (auto item = convert(record)) {
                items.push_back(*std::move(item));
            }
        });
        return items;
    }

  private:
    std::string path_;
    std::string home_;
    std::string_view category_;
    const platform::FileSystem& files_;
    const platform::Log& log_;
};

} // namespace foliovault
