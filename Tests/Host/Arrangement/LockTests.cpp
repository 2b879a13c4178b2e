#include "Host/Arrangement/FileLock.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST(FileLock, MakesItsFoldersForTheUserAlone) {
    const platform::TemporaryFolder folder;
    EXPECT_TRUE(FileLock::tryLock(folder.path("a/b/lock")));
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
        const auto lock = FileLock::tryLock(folder.path(path));
        ASSERT_FALSE(lock) << path;
        EXPECT_EQ(lock.error().kind, platform::Failure::Kind::unwritable) << path;
        EXPECT_EQ(lock.error().message, "cannot lock " + folder.path(path) + ": " + why);
    }
}

} // namespace
} // namespace host
