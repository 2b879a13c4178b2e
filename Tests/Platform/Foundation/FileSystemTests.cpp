#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/FileSystem.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace platform {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

constexpr std::size_t mebibyte = std::size_t{1} << 20U;

std::optional<Data> read(const std::string& path) {
    return DiskFileSystem::shared().read(path);
}

std::optional<std::string> replace(const std::string& path, std::string_view bytes) {
    const auto error = DiskFileSystem::shared().replace(path, bytes);
    return error ? std::optional(error->description) : std::nullopt;
}

std::string cannotWrite(const std::string& path, const std::string& reason) {
    return "cannot write " + path + ": " + reason;
}

TEST(DiskFileSystem, ReadsRegularFilesAloneAndSaysWhatExists) {
    const TemporaryFolder folder;
    const auto path = [&folder](const char* name) { return folder.path(name); };
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    fs::create_directory(path("folder"));
    fs::create_symlink("nowhere", path("dangling"));
    fs::create_symlink("itself", path("itself"));
    fs::create_symlink("file", path("link"));
    fs::resize_file(folder.write("huge", ""), DiskFileSystem::maxFileSize + 1);
    folder.write("file", "content");
    EXPECT_EQ(read(path("link"))->bytes(), "content");
    const DiskFileSystem& disk = DiskFileSystem::shared();
    for (const std::string& existing :
         {path("pipe"), path("folder"), path("dangling"), path("itself"), path("huge"), std::string("/dev/zero")}) {
        EXPECT_TRUE(disk.exists(existing)) << existing;
        EXPECT_FALSE(read(existing)) << existing;
    }
    for (const std::string& missing : {path("missing"), path("missing/file"), path("file/file"), std::string()}) {
        EXPECT_FALSE(disk.exists(missing)) << missing;
        EXPECT_FALSE(read(missing)) << missing;
    }
}

TEST(DiskFileSystem, ReadsAFileThatChangesMeanwhile) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "");
    const std::string zeros(mebibyte, '\0');
    for (int round = 0; round < 200; ++round) {
        // Cut short, or grown.
        const bool shrinks = round % 2 == 0;
        fs::resize_file(file, shrinks ? mebibyte : 1000);
        const std::jthread writer([&file, shrinks, round] {
            std::this_thread::sleep_for(std::chrono::microseconds(round / 2));
            fs::resize_file(file, shrinks ? 1 : mebibyte);
        });
        const std::optional<Data> data = read(file);
        EXPECT_TRUE(data && data->size() >= (shrinks ? 1U : 1000U) && zeros.starts_with(data->bytes())) << round;
    }
}

TEST(FileReplacement, ReplacesALinkOrFileByAFileForItsUserAlone) {
    const TemporaryFolder folder;
    folder.write("elsewhere", "mine");
    fs::create_symlink("elsewhere", folder.path("file"));
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, 9 * mebibyte + 1, std::size_t{100}}) {
        std::string content(size, 'a');
        for (std::size_t offset = 0; offset < size; offset += 251) {
            content[offset] = static_cast<char>(offset);
        }
        EXPECT_EQ(replace(folder.path("file"), content), std::nullopt);
        EXPECT_TRUE(read(folder.path("file"))->bytes() == content) << size;
        struct stat status {};
        ASSERT_EQ(lstat(folder.path("file").c_str(), &status), 0);
        EXPECT_EQ(status.st_mode, S_IFREG | 0600U);
        EXPECT_EQ(folder.names(), (Names{"elsewhere", "file"}));
        ASSERT_EQ(chmod(folder.path("file").c_str(), 0444), 0);
    }
    EXPECT_EQ(folder.content("elsewhere"), "mine");
}

TEST(FileReplacement, SaysWhyItCannot) {
    const TemporaryFolder folder;
    folder.write("file", "old");
    fs::create_directory(folder.path("folder"));
    fs::create_symlink("file", folder.path(".disturbed.new"));
    const std::pair<std::string, std::string> rows[]{
        {"missing/file", "No such file or directory"},
        {"file/file", "Not a directory"},
        {"folder", "Is a directory"},
        {"disturbed", "Too many levels of symbolic links"},
        {std::string(300, 'n'), "File name too long"},
    };
    for (const auto& [name, reason] : rows) {
        EXPECT_EQ(replace(folder.path(name), "new"), cannotWrite(folder.path(name), reason));
    }
    // The limit cuts a write short as a full disk does: it takes some bytes, then none.
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{.rlim_cur = 100'000, .rlim_max = limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_EQ(replace(folder.path("file"), std::string(100'001, 'n')),
              cannotWrite(folder.path("file"), "File too large"));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(folder.names(), (Names{".disturbed.new", "file", "folder"}));
    EXPECT_EQ(folder.content("file"), "old");
}

bool isWhole(const std::string& content) {
    return content.size() >= 1'000'000 && content.find_first_not_of(content.front()) == std::string::npos;
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
    std::vector<pid_t> writers;
    for (const auto& content :
         {std::string(1'000'000, 'a'), std::string(2'000'000, 'b'), std::string(1'500'000, 'c')}) {
        writers.push_back(startProcess([&folder, &content, count = 0]() mutable {
            if (replace(folder.path("file"), content)) {
                _exit(EXIT_FAILURE);
            }
            return ++count < 15;
        }));
    }
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
