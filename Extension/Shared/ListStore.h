// What the stores of all lists share: each reads one file of the user's library, a property list whose root is an array
// of dictionaries, its records.
//
// Reading reports no errors. A file that cannot be read has no records, and neither has one of another content; the log
// then says "Could not read NAME" at debug level, or "Could not parse NAME" as an error. A store reads the file on
// every call and keeps nothing of it: any thread, any number at once.
#pragma once

#include "Extension/Shared/DisplayableItem.h"
#include "Extension/Shared/FOLIOvaultPaths.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/Log.h"
#include "Platform/PropertyList/PropertyList.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
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

/// One of the library's files.
class LibraryFile {
  public:
    /// `category`, a string literal, is the category of what is logged.
    LibraryFile(const Library& library, const platform::URL& file, std::string_view category)
        : library_(&library), path_(file.path()), category_(category) {}

    /// Returns the file as it is now, if its root is an array of dictionaries.
    std::optional<platform::PropertyList> loadPlist() const;

    /// Returns what a host follows to learn of changes: the file's path below the user's home.
    std::vector<std::string> watches() const;

  protected:
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

    const std::string& realHome() const { return library_->paths.realHome; }

  private:
    const Library* library_;
    std::string path_;
    std::string_view category_;
};

template <DisplayableItem Item>
class ListStore : public LibraryFile {
  public:
    using Visit = std::function<void(Item&&)>;
    using LibraryFile::LibraryFile;
    virtual ~ListStore() = default;

    /// Calls `visit` with every item, in the file's order.
    void forEachItem(const Visit& visit) const {
        forEachRecord([&](const platform::PropertyListValue& record) { visitItems(record, visit); });
    }

    /// Returns all items in the file's order; what stands there twice makes two items.
    std::vector<Item> readFromPlist() const {
        std::vector<Item> items;
        forEachItem([&items](Item&& item) { items.push_back(std::move(item)); });
        return items;
    }

  private:
    /// Calls `visit` with the items that the record makes: one, or none, or those of a group.
    virtual void visitItems(const platform::PropertyListValue& record, const Visit& visit) const = 0;
};

} // namespace foliovault
