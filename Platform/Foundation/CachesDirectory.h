// Where a program keeps what it can do without.
#pragma once

#include "Platform/Foundation/UserDatabase.h"

#include <string>

namespace platform {

/// Returns the path of the user's folder for caches: XDG_CACHE_HOME if that is an absolute path, else ".cache" in the
/// home folder, which is HOME if that is an absolute path, else the one that `users` records, else "/". Does not access
/// the disk.
///
/// Source: the XDG base directories. Any thread, while the process's variables do not change.
std::string cachesDirectory(const UserDatabase& users);

} // namespace platform
