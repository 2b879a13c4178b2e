#include "Tests/Support/TemporaryFolder.h"

#include "Platform/Foundation/FileSystem.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mebibyte = std::size_t{1} << 20U;

std::optional<Data> read(const std::string& path) {
    return DiskFileSystem::shared().read(path);
}

TEST(DiskFileSystem, ReadsFilesOfEverySize) {
    const TemporaryFolder folder;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, 9 * mebibyte + 1}) {
        std::string content(size, 'a');
        for (std::size_t offset = 0; offset < size; offset += 251) {
            content[offset] = static_cast<char>(offset);
        }
        const std::optional<Data> data = read(folder.write("file", content));
        ASSERT_TRUE(data) << size;
        EXPECT_TRUE(data->bytes() == content) << size;
    }
}

#ifndef __SANITIZE_ADDRESS__ // which does without memory limits
TEST(DiskFileSystem, ReadsNothingThatItHasNoMemoryFor) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "");
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_DATA, &limit), 0);
    const rlimit small{.rlim_cur = 256 * mebibyte, .rlim_max = limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_DATA, &small), 0);
    fs::resize_file(file, 300 * mebibyte);
    EXPECT_FALSE(read(file));
    ASSERT_EQ(setrlimit(RLIMIT_DATA, &limit), 0);
    fs::resize_file(file, DiskFileSystem::maxFileSize + 1);
    EXPECT_FALSE(read(file));
}
#endif

TEST(DiskFileSystem, ReadsRegularFilesAloneAndSaysWhatExists) {
    const TemporaryFolder folder;
    const auto path = [&folder](const char* name) { return folder.path(name); };
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    fs::create_directory(path("folder"));
    fs::create_symlink("nowhere", path("dangling"));
    fs::create_symlink("dangling-itself", path("dangling-itself"));
    fs::create_symlink("file", path("link"));
    folder.write("file", "content");
    EXPECT_EQ(read(path("link"))->bytes(), "content");
    const DiskFileSystem& disk = DiskFileSystem::shared();
    const auto start = std::chrono::steady_clock::now();
    for (const std::string& existing : {path("pipe"), path("folder"), path("dangling"), path("dangling-itself"),
                                        std::string("/dev/null"), std::string("/dev/zero")}) {
        EXPECT_TRUE(disk.exists(existing)) << existing;
        EXPECT_FALSE(read(existing)) << existing;
    }
    for (const std::string& missing : {path("missing"), path("missing/file"), path("file/file"), std::string()}) {
        EXPECT_FALSE(disk.exists(missing)) << missing;
        EXPECT_FALSE(read(missing)) << missing;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

/// A file that changes while it is read gives what it held before or after, or the beginning of either.
TEST(DiskFileSystem, ReadsAFileThatChangesMeanwhile) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "");
    const auto replaceBy = [&](const std::string& other) {
        fs::create_hard_link(other, folder.path("link"));
        fs::rename(folder.path("link"), file);
    };
    const std::string before = folder.write("before", std::string(100'000, 'b'));
    const std::string after = folder.write("after", std::string(200'000, 'a'));
    struct Row {
        const char* what;
        std::function<void()> prepare;
        std::function<void()> change;
        std::set<char> bytes;
        std::size_t minSize;
    };
    const std::vector<Row> rows{
        {"cut short", [&] { fs::resize_file(file, mebibyte); }, [&] { fs::resize_file(file, 1); }, {'\0'}, 1},
        {"grown", [&] { fs::resize_file(file, 1000); }, [&] { fs::resize_file(file, mebibyte); }, {'\0'}, 1000},
        {"replaced", [&] { replaceBy(before); }, [&] { replaceBy(after); }, {'a', 'b'}, 100'000},
    };
    for (const Row& row : rows) {
        for (int round = 0; round < 100; ++round) {
            row.prepare();
            const std::jthread writer([&row, round] {
                std::this_thread::sleep_for(std::chrono::microseconds(round));
                row.change();
            });
            const std::optional<Data> data = read(file);
            const std::string_view bytes = data ? data->bytes() : std::string_view();
            EXPECT_TRUE(bytes.size() >= row.minSize && row.bytes.contains(bytes.front()) &&
                        bytes.substr(1) == bytes.substr(0, bytes.size() - 1))
                << row.what;
        }
    }
}

} // namespace
} // namespace platform
