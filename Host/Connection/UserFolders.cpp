#include "Host/Connection/UserFolders.h"

#include "Platform/Foundation/ProgramFolder.h"
#include "Platform/Foundation/UserDatabase.h"

#include <glib.h>

#include <algorithm>

namespace host {
namespace {

namespace fs = std::filesystem;

/// Ignores relative paths, as the rules for base directories require. GLib does not.
fs::path userFolder(const fs::path& chosen, const char* belowHome) {
    return chosen.is_absolute() ? chosen : fs::path(g_get_home_dir()) / belowHome;
}

void addOnce(std::vector<fs::path>& folders, const fs::path& folder) {
    if (folder.is_absolute() && std::find(folders.begin(), folders.end(), folder) == folders.end()) {
        folders.push_back(folder);
    }
}

} // namespace

fs::path userDataFolder() {
    return userFolder(g_get_user_data_dir(), ".local/share");
}

fs::path userConfigFolder() {
    return userFolder(g_get_user_config_dir(), ".config");
}

fs::path userCacheFolder() {
    return userFolder(g_get_user_cache_dir(), ".cache");
}

fs::path realHome(const std::optional<fs::path>& chosen) {
    if (!chosen) {
        return platform::SystemUserDatabase::shared().recordedHome().value_or("");
    }
    std::error_code failure;
    const fs::path normal = fs::absolute(*chosen, failure).lexically_normal();
    return normal.has_filename() ? normal : normal.parent_path();
}

std::vector<fs::path> dataFolders() {
    std::vector<fs::path> folders;
    addOnce(folders, userDataFolder());
    for (const gchar* const* each = g_get_system_data_dirs(); *each != nullptr; ++each) {
        addOnce(folders, *each);
    }
    addOnce(folders, platform::sharedFolder());
    return folders;
}

} // namespace host
