// The user's library, as a store meets it: where its files lie, how they are read, and where a store says what is wrong
// with them.
#pragma once

#include "Extension/Shared/FOLIOvaultPaths.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/Log.h"

namespace foliovault {

/// Refers to what it is made of, which must outlive it and every store on it. Any thread.
struct Library {
    const FOLIOvaultPaths& paths;
    const platform::FileSystem& files;
    const platform::Log& log;

    /// The user's own, on disk, with the extension's log.
    static const Library& shared();
};

} // namespace foliovault
