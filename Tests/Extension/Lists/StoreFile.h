// A file of the library in memory, and the store that reads it.
#pragma once

#include "Extension/Favorites/FavoritesStore.h"
#include "Extension/ReadingList/ReadingListStore.h"
#include "Extension/Workspaces/WorkspaceStore.h"

#include "Tests/Support/FakeUserDatabase.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/RecordingLog.h"

#include <string>

namespace foliovault::testing {

template <class Store>
inline const char* fileName = nullptr;
template <>
inline const char* fileName<FavoritesStore> = "Favorites.plist";
template <>
inline const char* fileName<ReadingListStore> = "ReadingList.plist";
template <>
inline const char* fileName<WorkspaceStore> = "OrderedWorkspaces.plist";

template <class Store>
struct StoreFile {
    const std::string path = std::string("/home/ada/Library/Application Support/FOLIOvault/") + fileName<Store>;
    platform::MemoryFileSystem files;
    platform::RecordingLog log;
    FOLIOvaultPaths paths{platform::FakeUserDatabase("/home/ada")};
    Library library{paths, files, log};
    Store store{library};

    /// No file at all.
    StoreFile() = default;
    explicit StoreFile(std::string content) { files.write(path, std::move(content)); }
    StoreFile(const StoreFile&) = delete;
    StoreFile& operator=(const StoreFile&) = delete;

    /// A file whose root is an XML array of `elements`.
    static StoreFile ofArray(const std::string& elements) {
        return StoreFile("<plist version=\"1.0\"><array>" + elements + "</array></plist>");
    }

    int readCount() const { return files.readCount(path); }
};

/// An XML dictionary of `members`, keys and values.
inline std::string dictionary(const std::string& members) {
    return "<dict>" + members + "</dict>";
}
inline std::string member(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>" + value;
}
inline std::string textMember(const std::string& key, const std::string& text) {
    return member(key, "<string>" + text + "</string>");
}

} // namespace foliovault::testing
