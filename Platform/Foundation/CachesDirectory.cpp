#include "Platform/Foundation/CachesDirectory.h"

#include <cstdlib>
#include <optional>

namespace platform {

namespace {

std::optional<std::string> absolutePath(const char* variable) {
    const char* const path = std::getenv(variable);
    return path != nullptr && *path == '/' ? std::optional<std::string>(path) : std::nullopt;
}

std::string homeOf(const UserDatabase& users) {
    if (auto home = absolutePath("HOME")) {
        return *std::move(home);
    }
    return users.recordedHome().value_or("");
}

} // namespace

std::string cachesDirectory(const UserDatabase& users) {
    if (auto chosen = absolutePath("XDG_CACHE_HOME")) {
        return *std::move(chosen);
    }
    return homeOf(users) + "/.cache";
}

} // namespace platform
