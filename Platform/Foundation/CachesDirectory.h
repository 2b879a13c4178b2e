// Where a program keeps what it can do without.
#pragma once

#include "Platform/Foundation/UserDatabase.h"

#include <string>

namespace platform {

/// The path of the user's folder for caches: XDG_CACHE_HOME where that is an absolute path, else ".cache" in the home
/// folder, which is HOME where that is an absolute path, else the one that `users` records, else "/". Nothing is looked
/// up on disk, and no folder is made.
///
/// Source: the XDG base directories. Any thread, as long as nobody changes the process's variables.
std::string cachesDirectory(const UserDatabase& users);

} // namespace platform
