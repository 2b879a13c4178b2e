// What the stores of all lists share: each reads one file of the user's library, a property list whose root is an array
// of dictionaries, its records.
//
// Reading reports no errors. A file that cannot be read has no records, and neither has one of another content; the log
// then says "Could not read NAME" at debug level, or "Could not parse NAME" as an error. A store reads the file on
// every call and keeps nothing of it: any thread, any number at once.
#pragma once

#include "Extension/Shared/FOLIOvaultPaths.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/Log.h"
#include "Platform/PropertyList/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace foliovault {

/// The user's library: where its files lie, how they are read, and where a store logs what is wrong with them. Its
/// members, and the library itself, must outlive every store on it.
struct Library {
    const FOLIOvaultPaths& paths;
    const platform::FileSystem& files;
    const platform::Log& log;

    /// The user's own, on disk, with the extension's log.
    static const Library& shared();
};

class ListStore {
  public:
    /// Returns the file as it is now, if its root is an array of dictionaries.
    std::optional<platform::PropertyList> loadPlist() const;

    /// Returns what a host follows to learn of changes: the file's path below the user's home.
    std::vector<std::string> watches() const;

  protected:
    /// `category`, a string literal, is the category of what the store logs.
    ListStore(const Library& library, const platform::URL& file, std::string_view category)
        : library_(&library), path_(file.path()), category_(category) {}

    const std::string& realHome() const { return library_->paths.realHome; }

    /// Calls `visit(record)` with every record of the file as it is now, in order.
    template <class Visit>
    void forEachRecord(Visit visit) const {
        if (const auto list = loadPlist()) {
            list->root().forEachElement([&visit](const platform::PropertyListValue& record) {
                visit(record);
                return true;
            });
        }
    }

    /// Returns what `convert(record)` makes of the records, in order. It returns an optional: a record that makes
    /// nothing is left out.
    template <class Convert>
    auto convertEach(Convert convert) const {
        std::vector<typename std::invoke_result_t<Convert, const platform::PropertyListValue&>::value_type> items;
        forEachRecord([&](const platform::PropertyListValue& record) {
            if (auto item = convert(record)) {
                items.push_back(*std::move(item));
            }
        });
        return items;
    }

  private:
    const Library* library_;
    std::string path_;
    std::string_view category_;
};

} // namespace foliovault
