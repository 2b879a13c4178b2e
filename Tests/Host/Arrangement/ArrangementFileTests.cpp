#include "Host/Arrangement/ArrangementFile.h"

#include "Host/Arrangement/ArrangementJson.h"
#include "Host/Arrangement/FileLock.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <set>
#include <thread>

namespace host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Kind = platform::Failure::Kind;
using Names = std::set<std::string>;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

const Addition addition{{.extension = "net.foliovault.widgets", .kind = "TipsWidget", .family = "medium"}};
const std::string newer = R"({"version":2,"screens":[]})";
const std::string broken = R"({"version":1,"instances":[{}]})";

class ArrangementFileTest : public testing::Test {
  protected:
    const platform::TemporaryFolder folder;
    const ArrangementFile file{platform::DiskFileSystem::shared(), folder.path("")};

    std::size_t count() const {
        const auto arrangement = file.load();
        EXPECT_TRUE(arrangement) << arrangement.error().message;
        return arrangement ? arrangement->instances.size() : 0;
    }
};

std::string failure(const ArrangementFile& file, const ArrangementChange& change, Kind kind) {
    const auto update = file.update(change);
    EXPECT_FALSE(update);
    EXPECT_EQ(update.error().kind, kind);
    EXPECT_THAT(update.error().message, Not(HasSubstr("\n")));
    return update.error().message;
}

TEST_F(ArrangementFileTest, BeginsEmptyAndKeepsWhatIsChanged) {
    EXPECT_EQ(count(), 0U);
    EXPECT_EQ(folder.names(), Names{});
    EXPECT_TRUE(file.update(addition));
    const auto update = file.update(addition);
    ASSERT_TRUE(update);
    EXPECT_EQ(update->notice, std::nullopt);
    EXPECT_TRUE(*file.load() == update->arrangement);
    EXPECT_EQ(failure(file, Removal{3}, Kind::usage), "there is no widget 3; there are 1, 2");
    EXPECT_EQ(failure(file, Edit{1, {{"group", std::string(maxArrangementFileSize, 'x')}}}, Kind::usage),
              "the arrangement would be larger than 1048576 bytes");
    EXPECT_EQ(count(), 2U);
    EXPECT_EQ(folder.names(), (Names{"arrangement.json", "arrangement.lock"}));
}

TEST_F(ArrangementFileTest, WaitsForAnothersLockOnlySoLongAndFollowsNoLink) {
    const std::string path = folder.path("arrangement.lock");
    const auto held = FileLock::tryLock(path);
    const ArrangementFile hasty(platform::DiskFileSystem::shared(), folder.path(""), 20ms);
    EXPECT_THAT(failure(hasty, addition, Kind::unwritable), HasSubstr("arrangement.lock: another process has it"));
    fs::remove(path);
    fs::create_symlink("nowhere", path);
    EXPECT_THAT(failure(hasty, addition, Kind::unwritable), HasSubstr("Too many levels of symbolic links"));
    EXPECT_EQ(count(), 0U);
}

TEST_F(ArrangementFileTest, LosesNothingOfManyProcesses) {
    constexpr int processes = 20;
    constexpr int additions = 3;
    std::vector<pid_t> writers;
    for (int process = 0; process < processes; ++process) {
        writers.push_back(platform::startProcess([&, left = additions]() mutable {
            if (!file.update(addition)) {
                _exit(EXIT_FAILURE);
            }
            return --left > 0;
        }));
    }
    for (const pid_t writer : writers) {
        EXPECT_EQ(platform::statusOf(writer), 0);
    }
    EXPECT_EQ(count(), std::size_t{processes * additions});
    EXPECT_EQ(file.load()->instances.back().id, InstanceId{processes * additions});
}

/// A process that is killed at any moment leaves a whole file, with all that it was told is done.
TEST_F(ArrangementFileTest, KeepsWhatIsDoneWhenAProcessIsKilled) {
    std::array<int, 2> done{};
    ASSERT_EQ(pipe(done.data()), 0);
    std::minstd_rand random(11);
    std::size_t reported = 0;
    std::size_t total = 0;
    // On a busy machine few are done before they are killed.
    for (int round = 0; round < 60 || (total < 20 && round < 2000); ++round) {
        const pid_t writer = platform::startProcess([&] {
            const auto update = file.update(addition);
            return update && write(done[1], "+", 1) == 1;
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 6000));
        kill(writer, SIGKILL);
        ASSERT_TRUE(WIFSIGNALED(platform::statusOf(writer))) << "it could not write";
        ASSERT_EQ(write(done[1], ".", 1), 1);
        const std::size_t before = reported;
        for (char sign = 0; read(done[0], &sign, 1) == 1 && sign == '+';) {
            ++reported;
        }
        // One more may have been done and not been told.
        const std::size_t found = count();
        ASSERT_GE(found, reported);
        ASSERT_LE(found, reported + 1);
        total += found - before;
        reported = found;
        if (reported > Arrangement::maxCount / 2) {
            fs::remove(folder.path("arrangement.json"));
            reported = 0;
        }
    }
    EXPECT_GE(total, 20U) << "too few changes to say anything";
    EXPECT_TRUE(file.update(addition));
    EXPECT_EQ(count(), reported + 1);
    close(done[0]);
    close(done[1]);
}

TEST_F(ArrangementFileTest, SetsEveryBrokenFileAside) {
    folder.write("arrangement.json.broken-1", "from long ago");
    folder.write("arrangement.json", broken);
    const auto read = file.load();
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, Kind::unreadable);
    EXPECT_THAT(read.error().message, HasSubstr("is broken (\"instances\": no. 1: without an id)"));
    // A change that is not made leaves it unchanged.
    EXPECT_EQ(failure(file, Removal{1}, Kind::unreadable), read.error().message);
    EXPECT_EQ(folder.content("arrangement.json"), broken);

    const auto update = file.update(addition);
    ASSERT_TRUE(update);
    EXPECT_THAT(update->notice.value_or(""),
                AllOf(HasSubstr("no. 1: without an id"), HasSubstr("arrangement.json.broken-2"), Not(HasSubstr("\n"))));
    EXPECT_EQ(count(), 1U);
    EXPECT_EQ(folder.content("arrangement.json.broken-1"), "from long ago");
    EXPECT_EQ(folder.content("arrangement.json.broken-2"), broken);
}

TEST_F(ArrangementFileTest, LeavesANewerFileAndWhatIsNoFileAsTheyAre) {
    folder.write("arrangement.json", newer);
    EXPECT_THAT(failure(file, addition, Kind::unreadable), HasSubstr("is from a newer program (version 2"));
    EXPECT_EQ(file.load().error().kind, Kind::unreadable);
    EXPECT_EQ(folder.content("arrangement.json"), newer);
    fs::remove(folder.path("arrangement.json"));
    fs::create_symlink("nowhere", folder.path("arrangement.json"));
    EXPECT_THAT(failure(file, addition, Kind::unreadable), HasSubstr("cannot be read"));
    EXPECT_TRUE(fs::is_symlink(folder.path("arrangement.json")));
}

/// The content lies in memory and fails on purpose; only the lock is on the disk.
TEST(ArrangementFile, LosesNothingWhenItCannotBeWritten) {
    const platform::TemporaryFolder folder;
    const std::string path = folder.path("arrangement.json");
    const std::string good = arrangementJson(*applied({}, addition));
    for (const std::string& content : {good, broken}) {
        platform::MemoryFileSystem files;
        files.write(path, content);
        const ArrangementFile file(files, folder.path(""));
        const auto expectUntouched = [&](Kind kind, const char* says) {
            EXPECT_THAT(failure(file, addition, kind), HasSubstr(says));
            EXPECT_EQ(files.read(path)->bytes(), content);
        };
        files.makeUnreadable(path);
        EXPECT_THAT(failure(file, addition, Kind::unreadable), HasSubstr("cannot be read"));
        files.makeReadable(path);
        files.limitRoom(content == good ? good.size() : broken.size() - 1);
        expectUntouched(Kind::unwritable, "No space left on device");
        // Room for the copy, not for what is to follow it.
        files.limitRoom(good.size() - 1);
        expectUntouched(Kind::unwritable, "No space left on device");
        files.freeRoom();
        EXPECT_TRUE(file.update(addition));
        files.write(path, content);
        files.loseRenames();
        expectUntouched(Kind::unwritable, "Input/output error");
    }
}

} // namespace
} // namespace host
