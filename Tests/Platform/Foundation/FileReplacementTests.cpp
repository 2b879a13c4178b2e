// How the disk replaces files: whole or not at all, whatever comes in between.

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/FileSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace platform {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

std::optional<std::string> replace(const std::string& path, std::string_view bytes) {
    const auto error = DiskFileSystem::shared().replace(path, bytes);
    return error ? std::optional(error->description) : std::nullopt;
}

std::string cannotWrite(const std::string& path, const std::string& reason) {
    return "cannot write " + path + ": " + reason;
}

TEST(FileReplacement, ReplacesAFileByOneForItsUserAlone) {
    const TemporaryFolder folder;
    for (const std::size_t size : {0U, 1U, 3'000'000U, 100U}) {
        const std::string content(size, 'x');
        EXPECT_EQ(replace(folder.path("file"), content), std::nullopt);
        EXPECT_TRUE(folder.content("file") == content) << size;
        struct stat status {};
        ASSERT_EQ(stat(folder.path("file").c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0600U);
        EXPECT_EQ(folder.names(), Names{"file"});
        ASSERT_EQ(chmod(folder.path("file").c_str(), 0444), 0);
    }
}

TEST(FileReplacement, SaysWhyItCannot) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    fs::create_directory(folder.path("folder"));
    fs::create_symlink("file", folder.path(".disturbed.new"));
    const std::vector<std::pair<std::string, std::string>> rows = {
        {folder.path("missing/file"), "No such file or directory"},
        {folder.path("file/file"), "Not a directory"},
        {folder.path("folder"), "Is a directory"},
        {folder.path("disturbed"), "Too many levels of symbolic links"},
        {folder.path(std::string(300, 'n')), "File name too long"},
    };
    for (const auto& [path, reason] : rows) {
        EXPECT_EQ(replace(path, "new"), cannotWrite(path, reason));
    }
    EXPECT_EQ(folder.names(), (Names{".disturbed.new", "file", "folder"}));
    EXPECT_EQ(folder.content("file"), "old");
}

/// The limit on a file's size cuts a write short as a full disk does: some bytes are taken, then none.
TEST(FileReplacement, KeepsTheOldFileWhenThereIsNoRoom) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{.rlim_cur = 100'000, .rlim_max = limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto error = replace(folder.path("file"), std::string(100'001, 'n'));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(error, cannotWrite(folder.path("file"), "File too large"));
    EXPECT_EQ(folder.content("file"), "old");
    EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(FileReplacement, ReplacesALinkAndNotWhatItLeadsTo) {
    const TemporaryFolder folder;
    folder.write("elsewhere", "mine");
    for (const std::string target : {"elsewhere", "nowhere"}) {
        fs::remove(folder.path("file"));
        fs::create_symlink(target, folder.path("file"));
        EXPECT_EQ(replace(folder.path("file"), "new"), std::nullopt);
        EXPECT_FALSE(fs::is_symlink(folder.path("file")));
        EXPECT_EQ(folder.content("file"), "new");
    }
    EXPECT_EQ(folder.content("elsewhere"), "mine");
    EXPECT_EQ(folder.names(), (Names{"elsewhere", "file"}));
}

bool isWhole(const std::string& content) {
    return content.size() >= 1'000'000 &&
           std::all_of(content.begin(), content.end(), [&](char byte) { return byte == content.front(); });
}

TEST(FileReplacement, LeavesAWholeFileAndNoWasteWhenItIsKilled) {
    const TemporaryFolder folder;
    const std::string contents[] = {std::string(2'000'000, 'a'), std::string(1'000'000, 'b')};
    ASSERT_EQ(replace(folder.path("file"), contents[0]), std::nullopt);
    std::minstd_rand random(7);
    bool hasLeftSomething = false;
    for (int round = 0; round < 15 || (!hasLeftSomething && round < 1000); ++round) {
        const pid_t writer = startProcess(
            [&, count = 0U]() mutable { return !replace(folder.path("file"), contents[++count % 2]).has_value(); });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 8000));
        kill(writer, SIGKILL);
        ASSERT_TRUE(WIFSIGNALED(statusOf(writer))) << "it could not write";
        ASSERT_TRUE(isWhole(folder.content("file"))) << round;
        hasLeftSomething = hasLeftSomething || folder.names().size() > 1;
        ASSERT_LE(folder.names().size(), 2U);
    }
    EXPECT_TRUE(hasLeftSomething) << "no process was killed in the middle";
    folder.write(".file.new", std::string(3'000'000, 'c'));
    EXPECT_EQ(replace(folder.path("file"), contents[1]), std::nullopt);
    EXPECT_TRUE(folder.content("file") == contents[1]);
    EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(FileReplacement, WaitsForNoOtherWriter) {
    const TemporaryFolder folder;
    std::vector<FileDescriptor> stuck;
    for (const std::string number : {"", "1", "2", "3", "4", "5", "6", "7"}) {
        EXPECT_EQ(replace(folder.path("file"), "written " + number), std::nullopt);
        EXPECT_EQ(folder.content("file"), "written " + number);
        stuck.emplace_back(open(folder.write(".file.new" + number, "half").c_str(), O_RDONLY | O_CLOEXEC));
        ASSERT_EQ(flock(stuck.back().get(), LOCK_EX | LOCK_NB), 0);
    }
    EXPECT_EQ(replace(folder.path("file"), "not written"),
              cannotWrite(folder.path("file"), "Resource temporarily unavailable"));
    EXPECT_EQ(folder.content("file"), "written 7");
    stuck.clear();
    EXPECT_EQ(replace(folder.path("file"), "written again"), std::nullopt);
    EXPECT_EQ(folder.content("file"), "written again");
}

TEST(FileReplacement, LetsSeveralWriteAtOnce) {
    const TemporaryFolder folder;
    ASSERT_EQ(replace(folder.path("file"), std::string(1'000'000, 'o')), std::nullopt);
    const auto writeOften = [&folder](char byte, std::size_t size) {
        return [&folder, content = std::string(size, byte), count = 0]() mutable {
            if (replace(folder.path("file"), content)) {
                _exit(EXIT_FAILURE);
            }
            return ++count < 15;
        };
    };
    const pid_t writers[] = {startProcess(writeOften('a', 1'000'000)), startProcess(writeOften('b', 2'000'000)),
                             startProcess(writeOften('c', 1'500'000))};
    for (const pid_t writer : writers) {
        int status = 0;
        while (waitpid(writer, &status, WNOHANG) == 0) {
            ASSERT_TRUE(isWhole(folder.content("file")));
        }
        EXPECT_EQ(status, 0) << "a writer failed";
    }
    EXPECT_EQ(folder.names(), Names{"file"});
}

} // namespace
} // namespace platform
