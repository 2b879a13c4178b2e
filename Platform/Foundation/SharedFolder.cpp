#include "Platform/Foundation/SharedFolder.h"

#include "Platform/Foundation/ProgramFolder.h"

#include <algorithm>
#include <unistd.h>

namespace platform {

std::string sharedFolder() {
    std::string folder = programFolder();
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
