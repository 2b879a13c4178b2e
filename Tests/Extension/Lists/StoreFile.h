// A file of the library in memory, and the store that reads it.
#pragma once

#include "Extension/Shared/ListStore.h"

#include "Tests/Support/FakeUserDatabase.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/RecordingLog.h"

#include <string>

namespace foliovault::testing {

template <class Store>
struct StoreFile {
    platform::MemoryFileSystem files;
    platform::RecordingLog log;
    FOLIOvaultPaths paths{platform::FakeUserDatabase("/home/ada")};
    Library library{paths, files, log};
    Store store{library};
    const std::string path = "/home/ada/" + store.watches().at(0);

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

} // namespace foliovault::testing
