// The paths of the application's data, in its support folder below the user's real home.
//
// The real home is that of the user database. For a confined extension, HOME is its container. Does not access the
// disk. `shared()` is computed once, at first use, and never changes. Any thread.
#pragma once

#include "Platform/Foundation/URL.h"
#include "Platform/Foundation/UserDatabase.h"

#include <string>

namespace foliovault {

class FOLIOvaultPaths {
  public:
    explicit FOLIOvaultPaths(const platform::UserDatabase& users);
    static const FOLIOvaultPaths& shared();

    /// The recorded home; without a record the process's home.
    const std::string realHome;
    const platform::URL appSupportURL;
    const platform::URL favoritesURL;
    const platform::URL readingListURL;
    const platform::URL workspacesURL;
};

} // namespace foliovault
