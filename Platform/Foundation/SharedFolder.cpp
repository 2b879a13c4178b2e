#include "Platform/Foundation/SharedFolder.h"

#include <algorithm>
#include <array>
#include <linux/limits.h>
#include <unistd.h>

namespace platform {

std::string sharedFolder() {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    std::string folder(path.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    folder.resize(std::min(folder.rfind('/'), folder.size()));
    constexpr int greatestDepth = 3;
    for (int depth = 0; depth < greatestDepth && !folder.empty(); ++depth) {
        folder.resize(std::min(folder.rfind('/'), folder.size()));
        std::string shared = folder + "/share";
        if (access(shared.c_str(), X_OK) == 0) {
            return shared;
        }
    }
    return "";
}

} // namespace platform
