#include "Tests/Support/FakeUserDatabase.h"

#include "Platform/Foundation/CachesDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace platform {
namespace {

/// Sets a variable for as long as it lives; null takes the variable away.
class Variable {
  public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        set(value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { set(before_ ? before_->c_str() : nullptr); }

  private:
    void set(const char* value) const {
        if (value != nullptr) {
            setenv(name_, value, 1);
        } else {
            unsetenv(name_);
        }
    }

    const char* name_;
    std::optional<std::string> before_;
};

TEST(CachesDirectory, IsWhereTheVariablesOrTheUserDatabaseSay) {
    struct Row {
        const char* chosen;
        const char* home;
        std::optional<std::string> recordedHome;
        const char* expected;
    };
    const std::vector<Row> rows = {
        {"/var/caches", "/home/ada", "/home/recorded", "/var/caches"},
        {"caches", "/home/ada", "/home/recorded", "/home/ada/.cache"},
        {"", "/home/ada", "/home/recorded", "/home/ada/.cache"},
        {nullptr, "/home/ada", "/home/recorded", "/home/ada/.cache"},
        {nullptr, "ada", "/home/recorded", "/home/recorded/.cache"},
        {nullptr, nullptr, "/home/recorded", "/home/recorded/.cache"},
        {nullptr, "", std::nullopt, "/.cache"},
    };
    for (const Row& row : rows) {
        const Variable chosen("XDG_CACHE_HOME", row.chosen);
        const Variable home("HOME", row.home);
        EXPECT_EQ(cachesDirectory(FakeUserDatabase(row.recordedHome)), row.expected);
    }
}

} // namespace
} // namespace platform
