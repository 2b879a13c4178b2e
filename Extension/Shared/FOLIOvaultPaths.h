// Where the application keeps its data: in its support folder below the user's real home.
//
// The real home is the one that the user database records, not HOME, which for a confined extension names its
// container. Nothing is looked up on disk. `shared()` is computed once, on first use, and kept for the life of the
// process. Any thread.
#pragma once

#include "Platform/Foundation/URL.h"
#include "Platform/Foundation/UserDatabase.h"

#include <string>

namespace foliovault {

class FOLIOvaultPaths {
  public:
    explicit FOLIOvaultPaths(const platform::UserDatabase& users);
    static const FOLIOvaultPaths& shared();

    /// As recorded; without a record the process's home.
    const std::string realHome;
    const platform::URL appSupportURL;
    const platform::URL favoritesURL;
    const platform::URL readingListURL;
    const platform::URL workspacesURL;
};

} // namespace foliovault
