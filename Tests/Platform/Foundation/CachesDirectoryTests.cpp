#include "Tests/Support/FakeUserDatabase.h"

#include "Platform/Foundation/CachesDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace platform {
namespace {

TEST(CachesDirectory, IsWhereTheVariablesOrTheUserDatabaseSay) {
    struct Row {
        const char* chosen;
        const char* home;
        std::optional<std::string> recordedHome;
        const char* expected;
    };
    // An empty variable counts as one that is not set.
    const Row rows[]{
        {"/var/caches", "/home/ada", "/home/recorded", "/var/caches"},
        {"caches", "/home/ada", "/home/recorded", "/home/ada/.cache"},
        {"", "/home/ada", "/home/recorded", "/home/ada/.cache"},
        {"", "ada", "/home/recorded", "/home/recorded/.cache"},
        {"", "", "/home/recorded", "/home/recorded/.cache"},
        {"", "", std::nullopt, "/.cache"},
    };
    for (const Row& row : rows) {
        setenv("XDG_CACHE_HOME", row.chosen, 1);
        setenv("HOME", row.home, 1);
        EXPECT_EQ(cachesDirectory(FakeUserDatabase(row.recordedHome)), row.expected);
    }
    unsetenv("XDG_CACHE_HOME");
    unsetenv("HOME");
    EXPECT_EQ(cachesDirectory(FakeUserDatabase("/home/recorded")), "/home/recorded/.cache");
}

} // namespace
} // namespace platform
