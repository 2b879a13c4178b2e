#include "Platform/Foundation/UserDatabase.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace {

/// What the user database of these tests holds for the current user.
struct Record {
    const char* home = "/home/somebody";
    std::size_t bytes = 100;
    int interruptions = 0;
    int error = 0;
    bool exists = true;
};
Record record;

} // namespace

/// Takes the C library's place.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its names are reserved ones
extern "C" int getpwuid_r(uid_t user, passwd* result, char* buffer, std::size_t size, passwd** found) {
    *found = nullptr;
    if (record.interruptions > 0) {
        --record.interruptions;
        return EINTR;
    }
    if (size < record.bytes) {
        return ERANGE;
    }
    if (!record.exists || user != getuid()) {
        return record.error;
    }
    *result = {};
    if (record.home != nullptr) {
        std::snprintf(buffer, size, "%s", record.home);
        result->pw_dir = buffer;
    }
    *found = result;
    return 0;
}

namespace platform {
namespace {

TEST(SystemUserDatabase, RecordedHome) {
    const std::vector<std::pair<Record, std::optional<std::string>>> records = {
        {{}, "/home/somebody"},
        {{.bytes = 100'000, .interruptions = 2}, "/home/somebody"},
        {{.bytes = std::size_t{1} << 40U}, std::nullopt},
        {{.exists = false}, std::nullopt},
        {{.error = EIO, .exists = false}, std::nullopt},
        {{.home = ""}, std::nullopt},
        {{.home = nullptr}, std::nullopt},
    };
    for (const auto& [recorded, home] : records) {
        record = recorded;
        EXPECT_EQ(SystemUserDatabase::shared().recordedHome(), home) << recorded.bytes << ' ' << recorded.error;
    }
    record = {};
}

TEST(SystemUserDatabase, ProcessHome) {
    for (const auto& [value, expected] : {std::pair{"/somewhere/else", "/somewhere/else"}, {"", "/"}}) {
        setenv("HOME", value, 1);
        EXPECT_EQ(SystemUserDatabase::shared().processHome(), expected);
    }
    unsetenv("HOME");
    EXPECT_EQ(SystemUserDatabase::shared().processHome(), "/");
}

} // namespace
} // namespace platform
