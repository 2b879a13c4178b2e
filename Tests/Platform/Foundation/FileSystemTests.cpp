#include "Tests/Support/TemporaryFolder.h"

#include "Platform/Foundation/FileSystem.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

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

TEST_F(DiskFileSystemTest, ReadsFilesOfEverySize) {
    constexpr std::size_t threshold = DiskFileSystem::mappingThreshold;
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{4096}, threshold - 1, threshold, threshold + 1, 2 * threshold}) {
        std::string content(size, 'a');
        for (std::size_t offset = 0; offset < size; offset += 251) {
            content[offset] = static_cast<char>(offset);
        }
        const std::optional<Data> data = read(write("file", content));
        ASSERT_TRUE(data) << size;
        EXPECT_TRUE(data->bytes() == content) << size;
    }
}

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
    const std::string file = write("file", "content");
    const DiskFileSystem& disk = DiskFileSystem::shared();
    for (const std::string& there : {file, path("folder"), path("dangling"), std::string("/dev/null")}) {
        EXPECT_TRUE(disk.exists(there)) << there;
    }
    for (const std::string& missing : {path("missing"), path("missing/file"), path("file/file"), std::string()}) {
        EXPECT_FALSE(disk.exists(missing)) << missing;
    }
}

TEST_F(DiskFileSystemTest, FollowsLinks) {
    write("file", "content");
    fs::create_symlink("file", path("link"));
    EXPECT_EQ(read(path("link"))->bytes(), "content");
}

TEST_F(DiskFileSystemTest, ReadsNothingWithoutPermission) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may read everything";
    }
    const std::string file = write("secret", "content");
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    EXPECT_FALSE(read(file));
}

/// What has been read stays as it was when the file is replaced or removed, mapped or not.
TEST_F(DiskFileSystemTest, KeepsWhatItHasRead) {
    for (const std::size_t size : {std::size_t{100}, DiskFileSystem::mappingThreshold + 100}) {
        const std::string content(size, 'a');
        const std::optional<Data> data = read(write("file", content));
        write("new", std::string(size / 2, 'b'));
        fs::rename(path("new"), path("file"));
        EXPECT_TRUE(data && data->bytes() == content) << size;
        EXPECT_EQ(read(path("file"))->size(), size / 2);
        fs::remove(path("file"));
        EXPECT_TRUE(data->bytes() == content) << size;
    }
}

/// A file that grows and shrinks meanwhile is read as some content that it had.
TEST_F(DiskFileSystemTest, ReadsAFileThatChangesMeanwhile) {
    const std::string file = write("file", std::string(1000, 'a'));
    std::jthread writer([&file](const std::stop_token& stop) {
        for (std::uintmax_t size = 0; !stop.stop_requested(); size = (size + 77'777) % 1'000'000) {
            fs::resize_file(file, size);
        }
    });
    for (int round = 0; round < 300; ++round) {
        const std::optional<Data> data = read(file);
        ASSERT_TRUE(data);
        ASSERT_LE(data->size(), 1'000'000U);
    }
}

/// A mapping lasts as long as its last share and no longer.
TEST_F(DiskFileSystemTest, GivesMappedMemoryBack) {
    const std::string file = write("mapped-file", std::string(DiskFileSystem::mappingThreshold + 1, 'a'));
    const auto isMapped = [] {
        std::ifstream maps("/proc/self/maps");
        const std::string text{std::istreambuf_iterator<char>(maps), {}};
        return text.find("mapped-file") != std::string::npos;
    };
    std::optional<Data> slice;
    {
        const std::optional<Data> data = read(file);
        slice = data->slice(data->bytes().substr(5, 3));
    }
    EXPECT_TRUE(isMapped());
    EXPECT_EQ(slice->bytes(), "aaa");
    slice.reset();
    EXPECT_FALSE(isMapped());
}

} // namespace
} // namespace platform
