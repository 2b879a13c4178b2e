#include "Tests/Support/TemporaryFolder.h"

#include "Platform/Foundation/FileSystem.h"

#include <gtest/gtest.h>

#include <barrier>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

namespace fs = std::filesystem;

class DiskFileSystemTest : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return folder_.path(name); }
    std::string write(const std::string& name, const std::string& content) const {
        return folder_.write(name, content);
    }

    static std::optional<Data> read(const std::string& path) { return DiskFileSystem::shared().read(path); }

  private:
    TemporaryFolder folder_;
};

constexpr std::size_t mebibyte = std::size_t{1} << 20U;

TEST_F(DiskFileSystemTest, ReadsFilesOfEverySize) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, 9 * mebibyte + 1}) {
        std::string content(size, 'a');
        for (std::size_t offset = 0; offset < size; offset += 251) {
            content[offset] = static_cast<char>(offset);
        }
        const std::optional<Data> data = read(write("file", content));
        ASSERT_TRUE(data) << size;
        EXPECT_TRUE(data->bytes() == content) << size;
    }
}

#ifndef __SANITIZE_ADDRESS__ // which does without memory limits
TEST_F(DiskFileSystemTest, ReadsNothingThatItHasNoMemoryFor) {
    const std::string file = write("file", "");
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_DATA, &limit), 0);
    const rlimit small{.rlim_cur = 256 * mebibyte, .rlim_max = limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_DATA, &small), 0);
    fs::resize_file(file, 300 * mebibyte);
    EXPECT_FALSE(read(file));
    ASSERT_EQ(setrlimit(RLIMIT_DATA, &limit), 0);
    EXPECT_TRUE(read(file));
    fs::resize_file(file, DiskFileSystem::maxFileSize + 1);
    EXPECT_FALSE(read(file));
}
#endif

TEST_F(DiskFileSystemTest, ReadsNothingButRegularFiles) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    fs::create_directory(path("folder"));
    fs::create_symlink("nowhere", path("dangling"));
    fs::create_symlink("dangling-itself", path("dangling-itself"));
    const auto start = std::chrono::steady_clock::now();
    for (const std::string& unreadable :
         {path("missing"), path("pipe"), path("folder"), path("dangling"), path("dangling-itself"),
          path("missing/file"), std::string("/dev/null"), std::string("/dev/zero"), std::string()}) {
        EXPECT_FALSE(read(unreadable)) << unreadable;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(DiskFileSystemTest, TellsWhatIsThereFromWhatCanBeRead) {
    fs::create_directory(path("folder"));
    fs::create_symlink("nowhere", path("dangling"));
    fs::create_symlink("file", path("link"));
    const std::string file = write("file", "content");
    EXPECT_EQ(read(path("link"))->bytes(), "content");
    const DiskFileSystem& disk = DiskFileSystem::shared();
    for (const std::string& there : {file, path("folder"), path("dangling"), std::string("/dev/null")}) {
        EXPECT_TRUE(disk.exists(there)) << there;
    }
    for (const std::string& missing : {path("missing"), path("missing/file"), path("file/file"), std::string()}) {
        EXPECT_FALSE(disk.exists(missing)) << missing;
    }
}

/// Whatever happens to a file meanwhile, it is read as a beginning of what it held, or all of it.
TEST_F(DiskFileSystemTest, ReadsAFileThatChangesMeanwhile) {
    const std::string file = write("file", "");
    const auto replaceBy = [&](const std::string& other) {
        fs::create_hard_link(other, path("link"));
        fs::rename(path("link"), file);
    };
    const std::string before = write("before", std::string(100'000, 'b'));
    const std::string after = write("after", std::string(200'000, 'a'));
    struct Row {
        const char* what;
        std::function<void()> prepare;
        std::function<void()> change;
        std::set<char> bytes;
        std::size_t least;
    };
    const std::vector<Row> rows{
        {"cut short", [&] { fs::resize_file(file, 5 * mebibyte); }, [&] { fs::resize_file(file, 1); }, {'\0'}, 1},
        {"grown", [&] { fs::resize_file(file, 1000); }, [&] { fs::resize_file(file, mebibyte); }, {'\0'}, 1000},
        {"replaced", [&] { replaceBy(before); }, [&] { replaceBy(after); }, {'a', 'b'}, 100'000},
    };
    constexpr int rounds = 300;
    for (const Row& row : rows) {
        std::barrier together(2);
        std::jthread writer([&] {
            for (int round = 0; round < rounds; ++round) {
                row.prepare();
                together.arrive_and_wait();
                std::this_thread::sleep_for(std::chrono::microseconds(round % 100));
                row.change();
                together.arrive_and_wait();
            }
        });
        for (int round = 0; round < rounds; ++round) {
            together.arrive_and_wait();
            const std::optional<Data> data = read(file);
            const std::string_view bytes = data ? data->bytes() : std::string_view();
            EXPECT_TRUE(bytes.size() >= row.least && row.bytes.contains(bytes.front()) &&
                        bytes.substr(1) == bytes.substr(0, bytes.size() - 1))
                << row.what;
            together.arrive_and_wait();
        }
    }
}

} // namespace
} // namespace platform
