// The common part of all list stores. Each reads a file of the user's library, a property list whose root is an array
// of dictionaries, its records.
//
// Reports no errors: a file that cannot be read or has another content counts as empty. Logs "Could not read NAME" at
// debug level, or "Could not parse NAME" as an error. Reads the file on every call and keeps nothing. Any thread,
// several at once.
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

/// The user's library: the paths of its files, how to read them, and the log of its stores. The library and its members
/// must outlive the stores.
struct Library {
    const FOLIOvaultPaths& paths;
    const platform::FileSystem& files;
    const platform::Log& log;

    /// The user's library on disk, with the extension's log.
    static const Library& shared();
};

/// One of the library's files.
class LibraryFile {
  public:
    /// `category`, a string literal, is that of the log.
    LibraryFile(const Library& library, const platform::URL& file, std::string_view category)
        : library_(&library), path_(file.path()), category_(category) {}

    /// Reads the file. Returns nothing if its root is not an array of dictionaries.
    std::optional<platform::PropertyList> loadPlist() const;

    /// Returns the file's path below the user's home, for `Timeline::watches`.
    std::vector<std::string> watches() const;

  protected:
    /// Reads the file and calls `visit(record)` with every record, in order.
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

    /// Returns all items in the file's order, duplicates included.
    std::vector<Item> readFromPlist() const {
        std::vector<Item> items;
        forEachItem([&items](Item&& item) { items.push_back(std::move(item)); });
        return items;
    }

  private:
    /// Calls `visit` with the record's items: none, one, or those of a group.
    virtual void visitItems(const platform::PropertyListValue& record, const Visit& visit) const = 0;
};

} // namespace foliovault
