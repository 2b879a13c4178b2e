#include "Platform/Foundation/UserDatabase.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace platform {
namespace {

std::optional<std::string> absolutePath(const char* variable) {
    const char* const path = std::getenv(variable);
    return path != nullptr && *path == '/' ? std::optional<std::string>(path) : std::nullopt;
}

} // namespace

std::optional<std::string> SystemUserDatabase::recordedHome() const {
    // A longer record is damaged.
    constexpr std::size_t maxRecordSize = std::size_t{1} << 20U;
    passwd record{};
    passwd* found = nullptr;
    std::string buffer(1024, '\0');
    int error = getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found);
    while (error == EINTR || (error == ERANGE && buffer.size() < maxRecordSize)) {
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

std::string cachesDirectory(const UserDatabase& users) {
    if (auto chosen = absolutePath("XDG_CACHE_HOME")) {
        return *std::move(chosen);
    }
    const auto home = absolutePath("HOME");
    return (home ? *home : users.recordedHome().value_or("")) + "/.cache";
}

} // namespace platform
