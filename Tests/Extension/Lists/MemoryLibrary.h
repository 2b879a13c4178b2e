// A library in memory, and one of its lists.
#pragma once

#include "Extension/Shared/ListStore.h"

#include "Tests/Support/Fakes.h"
#include "Tests/Support/MemoryFileSystem.h"

#include <string>

namespace foliovault::testing {

struct MemoryLibrary {
    platform::MemoryFileSystem files;
    platform::RecordingLog log;
    FOLIOvaultPaths paths{platform::FakeUserDatabase("/home/ada")};
    Library library{paths, files, log};

    MemoryLibrary() = default;
    MemoryLibrary(const MemoryLibrary&) = delete;
    MemoryLibrary& operator=(const MemoryLibrary&) = delete;
};

template <class Store>
struct StoreFile : MemoryLibrary {
    Store store{library};
    explicit StoreFile(const std::string& content) { files.write("/home/ada/" + store.watches().at(0), content); }
};

} // namespace foliovault::testing
