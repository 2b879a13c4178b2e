#include "Platform/Foundation/Log.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>
#include <vector>

namespace {
std::vector<std::pair<int, std::string>> syslogLines;
}

/// Takes the C library's place, so that the way round the journal can be seen.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): its names are reserved ones
extern "C" void syslog(int priority, const char* format, ...) {
    std::array<char, 256> line{};
    va_list arguments;
    va_start(arguments, format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_start is not seen through the C linkage
    std::vsnprintf(line.data(), line.size(), format, arguments);
    va_end(arguments);
    syslogLines.emplace_back(priority, line.data());
}

namespace platform {
namespace {

/// A journal of the test's own.
class Journal {
  public:
    Journal() {
        folder_ = testing::TempDir() + "journalXXXXXX";
        if (mkdtemp(folder_.data()) == nullptr) {
            throw std::runtime_error("no folder");
        }
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path().c_str(), sizeof address.sun_path - 1);
        handle_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (bind(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            throw std::runtime_error("no socket");
        }
    }
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    ~Journal() {
        stopListening();
        unlink(path().c_str());
        rmdir(folder_.c_str());
    }

    std::string path() const { return folder_ + "/socket"; }

    /// The next datagram, or nothing.
    std::string next() const {
        std::string datagram(1 << 16, '\0');
        const ssize_t size = recv(handle_, datagram.data(), datagram.size(), 0);
        datagram.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return datagram;
    }

    void stopListening() {
        if (handle_ >= 0) {
            close(handle_);
        }
        handle_ = -1;
    }

  private:
    std::string folder_;
    int handle_ = -1;
};

class SystemLogTest : public testing::Test {
  protected:
    void SetUp() override { syslogLines.clear(); }
    std::string identifier = std::string("SYSLOG_IDENTIFIER=") + program_invocation_short_name + "\n";
};

TEST_F(SystemLogTest, SendsFieldsToTheJournal) {
    const Journal journal;
    const SystemLog log("net.foliovault.widgets", journal.path());
    log.write(LogLevel::error, "favorites", "no such file: 100%");
    EXPECT_EQ(journal.next(), "MESSAGE=no such file: 100%\nPRIORITY=3\n" + identifier +
                                  "SUBSYSTEM=net.foliovault.widgets\nCATEGORY=favorites\n");
    log.write(LogLevel::debug, "", "");
    EXPECT_EQ(journal.next(), "MESSAGE=\nPRIORITY=7\n" + identifier + "SUBSYSTEM=net.foliovault.widgets\nCATEGORY=\n");
    EXPECT_TRUE(syslogLines.empty());
}

TEST_F(SystemLogTest, SendsLinesWithTheirLength) {
    const Journal journal;
    SystemLog("s", journal.path()).write(LogLevel::debug, "c", std::string(0x102, 'x') + "\nPRIORITY=0\n");
    const std::string length{"\x0E\x01\0\0\0\0\0\0", 8};
    EXPECT_EQ(journal.next(), "MESSAGE\n" + length + std::string(0x102, 'x') + "\nPRIORITY=0\n\nPRIORITY=7\n" +
                                  identifier + "SUBSYSTEM=s\nCATEGORY=c\n");
}

TEST_F(SystemLogTest, DoesNotWaitForABusyJournal) {
    const Journal journal;
    const SystemLog log("s", journal.path());
    for (int line = 0; line < 10000; ++line) {
        log.write(LogLevel::debug, "c", std::string(1000, 'x'));
    }
    EXPECT_TRUE(syslogLines.empty());
    EXPECT_NE(journal.next(), "");
}

TEST_F(SystemLogTest, WithoutAJournalWritesToSyslog) {
    Journal journal;
    journal.stopListening();
    for (const std::string& path : {journal.path(), journal.path() + ".none", std::string(200, 'x'), std::string()}) {
        syslogLines.clear();
        SystemLog("s", path).write(LogLevel::error, std::string_view("category").substr(0, 3), "50% of %s\n");
        const std::vector<std::pair<int, std::string>> expected = {{LOG_USER | LOG_ERR, "[s:cat] 50% of %s\n"}};
        EXPECT_EQ(syslogLines, expected) << path;
    }
}

} // namespace
} // namespace platform
