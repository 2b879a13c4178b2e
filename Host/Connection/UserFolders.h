// The XDG base directories.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace host {

/// Returns XDG_DATA_HOME, or its default below HOME.
std::filesystem::path userDataFolder();

/// Returns XDG_CONFIG_HOME, or its default below HOME.
std::filesystem::path userConfigFolder();

/// Returns XDG_CACHE_HOME, or its default below HOME.
std::filesystem::path userCacheFolder();

/// Returns `chosen` as an absolute path without a slash at its end, or else the user's home in the user database,
/// regardless of HOME. Empty if the database has none.
std::filesystem::path realHome(const std::optional<std::filesystem::path>& chosen);

/// Returns the data folders in search order: the user's, XDG_DATA_DIRS, and the one this program was installed in.
std::vector<std::filesystem::path> dataFolders();

} // namespace host
