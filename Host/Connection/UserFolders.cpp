#include "Host/Connection/UserFolders.h"

#include "Platform/Foundation/SharedFolder.h"
#include "Platform/Foundation/UserDatabase.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace host {
namespace {

namespace fs = std::filesystem;

std::string environmentText(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here sets variables
    return value == nullptr ? std::string() : std::string(value);
}

fs::path userFolder(const char* variable, const char* belowHome) {
    const fs::path chosen = environmentText(variable);
    return chosen.is_absolute() ? chosen : fs::path(environmentText("HOME")) / belowHome;
}

void addOnce(std::vector<fs::path>& folders, const fs::path& folder) {
    // The base directory rules have relative paths ignored.
    if (folder.is_absolute() && std::find(folders.begin(), folders.end(), folder) == folders.end()) {
        folders.push_back(folder);
    }
}

} // namespace

fs::path userDataFolder() {
    return userFolder("XDG_DATA_HOME", ".local/share");
}

fs::path userConfigFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

fs::path userCacheFolder() {
    return userFolder("XDG_CACHE_HOME", ".cache");
}

fs::path realHome(const std::optional<fs::path>& chosen) {
    std::error_code failure;
    return chosen ? fs::absolute(*chosen, failure).lexically_normal()
                  : fs::path(platform::SystemUserDatabase::shared().recordedHome().value_or(""));
}

std::vector<fs::path> dataFolders() {
    std::vector<fs::path> folders;
    addOnce(folders, userDataFolder());
    std::string list = environmentText("XDG_DATA_DIRS");
    if (list.empty()) {
        list = "/usr/local/share:/usr/share";
    }
    for (std::string_view rest = list; !rest.empty();) {
        const std::size_t colon = std::min(rest.find(':'), rest.size());
        addOnce(folders, rest.substr(0, colon));
        rest.remove_prefix(std::min(colon + 1, rest.size()));
    }
    addOnce(folders, platform::sharedFolder());
    return folders;
}

} // namespace host
