#include "Host/Arrangement/FileLock.h"
#include "Host/Arrangement/HostLock.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <sys/stat.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::optional<LockError::Kind> failureOf(const platform::Expected<HostLock, LockError>& lock) {
    return lock ? std::nullopt : std::optional(lock.error().kind);
}

TEST(HostLock, IsOneHostsAsLongAsItLives) {
    const platform::TemporaryFolder folder;
    const fs::path place = folder.path("config/widgethost");
    {
        const auto ours = HostLock::take(place);
        EXPECT_EQ(failureOf(ours), std::nullopt);
        EXPECT_EQ(failureOf(HostLock::take(place)), LockError::Kind::held);
        const pid_t other = platform::startProcess([&] {
            if (failureOf(HostLock::take(place)) != LockError::Kind::held) {
                _exit(EXIT_FAILURE);
            }
            return false;
        });
        EXPECT_EQ(platform::statusOf(other), 0);
        // Commands go on meanwhile.
        EXPECT_TRUE(FileLock::take(place / "arrangement.lock", 0ms));
    }
    EXPECT_EQ(failureOf(HostLock::take(place)), std::nullopt);
}

TEST(HostLock, GoesWithAHostThatIsKilled) {
    const platform::TemporaryFolder folder;
    const fs::path place = folder.path("widgethost");
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t killed = platform::startProcess([&] {
        const auto lock = HostLock::take(place);
        if (!lock || write(ready[1], "!", 1) != 1) {
            _exit(EXIT_FAILURE);
        }
        pause();
        return false;
    });
    char sign = 0;
    ASSERT_EQ(read(ready[0], &sign, 1), 1);
    EXPECT_EQ(failureOf(HostLock::take(place)), LockError::Kind::held);
    kill(killed, SIGKILL);
    EXPECT_TRUE(WIFSIGNALED(platform::statusOf(killed)));
    EXPECT_EQ(failureOf(HostLock::take(place)), std::nullopt);
    close(ready[0]);
    close(ready[1]);
}

TEST(FileLock, MakesItsFoldersForTheUserAlone) {
    const platform::TemporaryFolder folder;
    EXPECT_TRUE(FileLock::take(folder.path("a/b/lock"), 0ms));
    for (const char* made : {"a", "a/b"}) {
        struct stat status {};
        ASSERT_EQ(stat(folder.path(made).c_str(), &status), 0) << made;
        EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFDIR | S_IRWXU)) << made;
    }
}

TEST(FileLock, SaysWhyItCannotBeHad) {
    const platform::TemporaryFolder folder;
    folder.write("file", "");
    fs::create_directory(folder.path("folder"));
    fs::create_symlink("nowhere", folder.path("link"));
    struct Row {
        const char* path;
        const char* why;
    };
    for (const auto& [path, why] :
         {Row{"file/lock", "Not a directory"}, Row{"folder", "Is a directory"},
          Row{"link", "Too many levels of symbolic links"}, Row{"link/lock", "No such file or directory"}}) {
        const auto lock = FileLock::take(folder.path(path), 0ms);
        ASSERT_FALSE(lock) << path;
        EXPECT_EQ(lock.error().kind, LockError::Kind::impossible) << path;
        EXPECT_EQ(lock.error().message, "cannot lock " + folder.path(path) + ": " + why);
    }
}

} // namespace
} // namespace host
