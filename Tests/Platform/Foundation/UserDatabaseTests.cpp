#include "Tests/Support/FakeUserDatabase.h"

#include "Platform/Foundation/CachesDirectory.h"

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
    const std::pair<Record, std::optional<std::string>> records[]{
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

TEST(UserDatabase, CachesAndHomeFollowTheVariables) {
    struct Row {
        const char* caches;
        const char* home;
        std::optional<std::string> recordedHome;
        const char* expected;
        const char* processHome;
    };
    const Row rows[]{
        {"/var/caches", "/home/ada", "/home/recorded", "/var/caches", "/home/ada"},
        {"caches", "/home/ada", "/home/recorded", "/home/ada/.cache", "/home/ada"},
        {"", "ada", "/home/recorded", "/home/recorded/.cache", "ada"},
        {nullptr, nullptr, std::nullopt, "/.cache", "/"},
        {nullptr, "", std::nullopt, "/.cache", "/"},
    };
    for (const Row& row : rows) {
        for (const auto& [name, value] : {std::pair{"XDG_CACHE_HOME", row.caches}, {"HOME", row.home}}) {
            value != nullptr ? setenv(name, value, 1) : unsetenv(name);
        }
        EXPECT_EQ(cachesDirectory(FakeUserDatabase(row.recordedHome)), row.expected);
        EXPECT_EQ(SystemUserDatabase::shared().processHome(), row.processHome);
    }
}

} // namespace
} // namespace platform
