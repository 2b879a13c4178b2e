// A favourites file in memory, and a store on it.
#pragma once

#include "Extension/Favorites/FavoritesStore.h"

#include "Tests/Support/FakeUserDatabase.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/RecordingLog.h"

#include <optional>
#include <string>
#include <string_view>

namespace foliovault::testing {

struct FavoritesFile {
    platform::MemoryFileSystem files;
    platform::RecordingLog log;
    FOLIOvaultPaths paths{platform::FakeUserDatabase("/home/ada")};
    FavoritesStore store{paths, files, log};

    /// No file at all.
    FavoritesFile() = default;
    explicit FavoritesFile(std::string content) {
        files.write("/home/ada/Library/Application Support/FOLIOvault/Favorites.plist", std::move(content));
    }
    FavoritesFile(const FavoritesFile&) = delete;
    FavoritesFile& operator=(const FavoritesFile&) = delete;

    /// A file whose root is an XML array of `elements`.
    static FavoritesFile ofArray(const std::string& elements) {
        return FavoritesFile("<plist version=\"1.0\"><array>" + elements + "</array></plist>");
    }
};

} // namespace foliovault::testing
