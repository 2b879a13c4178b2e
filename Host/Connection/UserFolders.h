// The folders of the XDG base directories that the host uses.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace host {

/// XDG_DATA_HOME, or what stands for it below HOME.
std::filesystem::path userDataFolder();

/// XDG_CONFIG_HOME, or what stands for it below HOME.
std::filesystem::path userConfigFolder();

/// XDG_CACHE_HOME, or what stands for it below HOME.
std::filesystem::path userCacheFolder();

/// `chosen`, made absolute, or else the home that the user database has for the user, whatever HOME says; empty where
/// it has none.
std::filesystem::path realHome(const std::optional<std::filesystem::path>& chosen);

/// The data folders in the order in which they are searched: the user's, XDG_DATA_DIRS, what this program was
/// installed with.
std::vector<std::filesystem::path> dataFolders();

} // namespace host
