// The user database and the log of the system, with functions of the C library replaced.

#include "Tests/Support/Fakes.h"
#include "Tests/Support/TemporaryFolder.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/Log.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>
#include <vector>

namespace {

/// What the user database of these tests holds for the current user.
struct Record {
    const char* home = "/home/somebody";
    std::size_t bytes = 100;
    int interruptions = 0;
    bool exists = true;
};
Record record;

std::vector<std::pair<int, std::string>> syslogLines;

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
        return 0;
    }
    *result = {};
    if (record.home != nullptr) {
        std::snprintf(buffer, size, "%s", record.home);
        result->pw_dir = buffer;
    }
    *found = result;
    return 0;
}

/// Takes the C library's place.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its names are reserved ones
extern "C" void syslog(int priority, const char* format, ...) {
    std::string line(256, '\0');
    va_list arguments;
    va_start(arguments, format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_start is not seen through the C linkage
    std::vsnprintf(line.data(), line.size(), format, arguments);
    va_end(arguments);
    syslogLines.emplace_back(priority, line.c_str());
}

namespace platform {
namespace {

TEST(SystemUserDatabase, RecordedHome) {
    const std::pair<Record, std::optional<std::string>> records[]{
        {{}, "/home/somebody"},
        {{.bytes = 100'000, .interruptions = 2}, "/home/somebody"},
        {{.bytes = std::size_t{1} << 40U}, std::nullopt},
        {{.exists = false}, std::nullopt},
        {{.home = ""}, std::nullopt},
        {{.home = nullptr}, std::nullopt},
    };
    for (const auto& [recorded, home] : records) {
        record = recorded;
        EXPECT_EQ(SystemUserDatabase::shared().recordedHome(), home) << recorded.bytes;
    }
    record = {};
}

TEST(UserDatabase, CachesAndHomeFollowTheVariables) {
    using Variable = const char*;
    const std::tuple<Variable, Variable, std::optional<std::string>, std::string, std::string> rows[]{
        {"/var/caches", "/home/ada", "/home/recorded", "/var/caches", "/home/ada"},
        {"caches", "/home/ada", "/home/recorded", "/home/ada/.cache", "/home/ada"},
        {"", "ada", "/home/recorded", "/home/recorded/.cache", "ada"},
        {nullptr, nullptr, std::nullopt, "/.cache", "/"},
        {nullptr, "", std::nullopt, "/.cache", "/"},
    };
    for (const auto& [caches, home, recordedHome, expectedCaches, processHome] : rows) {
        caches != nullptr ? setenv("XDG_CACHE_HOME", caches, 1) : unsetenv("XDG_CACHE_HOME");
        home != nullptr ? setenv("HOME", home, 1) : unsetenv("HOME");
        EXPECT_EQ(cachesDirectory(FakeUserDatabase(recordedHome)), expectedCaches);
        EXPECT_EQ(SystemUserDatabase::shared().processHome(), processHome);
    }
}

/// A socket in place of the journal's.
struct Journal {
    Journal() {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }

    /// Returns the next datagram; empty without one.
    std::string next() const {
        std::string datagram(1 << 16, '\0');
        const ssize_t size = recv(socket.get(), datagram.data(), datagram.size(), 0);
        datagram.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return datagram;
    }

    const TemporaryFolder folder;
    const std::string path = folder.path("socket");
    FileDescriptor socket{::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)};
};

TEST(SystemLog, SendsFieldsToTheJournalAndDoesNotWaitForIt) {
    const Journal journal;
    const SystemLog log("sub", journal.path);
    const std::string rest =
        std::string("SYSLOG_IDENTIFIER=") + program_invocation_short_name + "\nSUBSYSTEM=sub\nCATEGORY=";
    log.write(LogLevel::error, "favorites", "no such file: 100%");
    EXPECT_EQ(journal.next(), "MESSAGE=no such file: 100%\nPRIORITY=3\n" + rest + "favorites\n");
    // Several lines go with their length.
    log.write(LogLevel::debug, "", std::string(0x102, 'x') + "\nPRIORITY=0\n");
    const std::string length{"\x0E\x01\0\0\0\0\0\0", 8};
    EXPECT_EQ(journal.next(),
              "MESSAGE\n" + length + std::string(0x102, 'x') + "\nPRIORITY=0\n\nPRIORITY=7\n" + rest + "\n");
    for (int line = 0; line < 1000; ++line) {
        log.write(LogLevel::debug, "c", std::string(1000, 'x'));
    }
    EXPECT_TRUE(syslogLines.empty());
    EXPECT_NE(journal.next(), "");
}

TEST(SystemLog, WithoutAJournalWritesToSyslog) {
    Journal journal;
    journal.socket.close();
    for (const std::string& unheard : {journal.path, journal.path + ".missing", std::string(200, 'x'), std::string()}) {
        syslogLines.clear();
        SystemLog("s", unheard).write(LogLevel::error, std::string_view("category").substr(0, 3), "50% of %s\n");
        const std::vector<std::pair<int, std::string>> expected = {{LOG_USER | LOG_ERR, "[s:cat] 50% of %s\n"}};
        EXPECT_EQ(syslogLines, expected) << unheard;
    }
}

} // namespace
} // namespace platform
