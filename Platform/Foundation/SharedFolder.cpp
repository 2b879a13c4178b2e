#include "Platform/Foundation/SharedFolder.h"

#include "Platform/Foundation/ProgramFolder.h"

#include <algorithm>
#include <unistd.h>

namespace platform {

std::string sharedFolder() {
    std::string folder = programFolder();
    folder.resize(std::min(folder.rfind('/'), folder.size()));
    folder += "/share";
    return access(folder.c_str(), X_OK) == 0 ? folder : "";
}

} // namespace platform
