#include "Platform/Foundation/ProgramFolder.h"

#include <algorithm>
#include <array>
#include <linux/limits.h>
#include <string_view>
#include <unistd.h>

namespace platform {

std::string programFolder() {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    const std::string_view program(path.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return std::string(program.substr(0, std::min(program.rfind('/'), program.size())));
}

std::string sharedFolder() {
    std::string folder = programFolder();
    folder.resize(std::min(folder.rfind('/'), folder.size()));
    folder += "/share";
    return access(folder.c_str(), X_OK) == 0 ? folder : "";
}

} // namespace platform
