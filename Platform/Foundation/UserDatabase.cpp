#include "Platform/Foundation/UserDatabase.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace platform {

std::optional<std::string> SystemUserDatabase::recordedHome() const {
    // A record that needs more than this is damage, not a user.
    constexpr std::size_t largestRecord = std::size_t{1} << 20U;
    passwd record{};
    passwd* found = nullptr;
    std::string buffer(1024, '\0');
    int error = getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found);
    while (error == EINTR || (error == ERANGE && buffer.size() < largestRecord)) {
        if (error == ERANGE) {
            buffer.resize(buffer.size() * 2);
        }
        error = getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found);
    }
    if (found == nullptr || found->pw_dir == nullptr || *found->pw_dir == '\0') {
        return std::nullopt;
    }
    return found->pw_dir;
}

std::string SystemUserDatabase::processHome() const {
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != '\0' ? home : "/";
}

const SystemUserDatabase& SystemUserDatabase::shared() {
    static const SystemUserDatabase database;
    return database;
}

} // namespace platform
