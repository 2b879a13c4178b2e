// Every way in which a file can change, on the real disk.

#include "Host/Session/FileWatcher.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

/// A home with a library in it, and the watcher of one of its files.
class FileWatcherTest : public ::testing::Test {
  public:
    FileWatcherTest() {
        fs::create_directories(library);
        write("old");
    }

    void write(const std::string& text) const { std::ofstream(file) << text; }

    static FileWatcher::Time now() { return std::chrono::steady_clock::now(); }

    enum class Change { none, atOnce, atDeadline };
    /// Returns whether the next change counts at its event or at a deadline; `none` if no change counts.
    Change nextChange() {
        const auto end = now() + 2 * settleTime;
        do {
            const auto until = std::min(watcher.deadline().value_or(end), end);
            pollfd ready{watcher.descriptor(), POLLIN, 0};
            const auto wait = std::chrono::ceil<std::chrono::milliseconds>(until - now());
            const bool isEvent = poll(&ready, 1, static_cast<int>(std::max<std::int64_t>(wait.count(), 0))) > 0;
            watcher.dispatch(now());
            changed = watcher.takeChanged(now());
            if (!changed.empty()) {
                return isEvent ? Change::atOnce : Change::atDeadline;
            }
        } while (now() < end);
        return Change::none;
    }

    void passOverChanges() {
        while (nextChange() != Change::none) {
        }
    }

    static constexpr auto settleTime = 40ms;
    platform::TemporaryFolder folder;
    fs::path home = folder.path("home");
    fs::path library = home / "Library" / "Support" / "App";
    fs::path file = library / "file";
    std::vector<std::string> changed;
    FileWatcher watcher{home, settleTime};
};

TEST_F(FileWatcherTest, NoticesEveryWayToChangeAFile) {
    using enum Change;
    // Commands of the shell for (L)ibrary, (H)ome, a (F)ile in the library and a folder (O)utside.
    struct Row {
        const char* name;
        std::string prepare;
        std::string change;
        Change expected = atOnce;
    };
    const std::string link = "mkdir $O; echo > $O/target; ln -sf $O/target $F";
    const Row rows[]{
        {"written in place", "", "echo new > $F"},
        {"replaced by a rename", "", "echo new > $L/fresh; mv $L/fresh $F"},
        {"touched", "", "touch $F"},
        {"made readable", "chmod 0 $F", "chmod 600 $F"},
        {"removed", "", "rm $F", atDeadline},
        {"made anew", "rm $F", "echo new > $F"},
        {"moved away", "", "mv $F $L/fresh", atDeadline},
        {"its folder removed", "", "rm -r $L", atDeadline},
        {"its folder appears", "rm -r $L", "mkdir $L", atDeadline},
        {"its folders appear with it", "rm -r $H/Library", "mkdir -p $L; echo new > $F", atDeadline},
        {"all folders appear with it", "rm -r $H", "mkdir -p $L; echo new > $F", atDeadline},
        {"its folder replaced", "", "mv $L $H/aside; mkdir $H/other; echo new > $H/other/file; mv $H/other $L"},
        {"a folder above replaced", "", "mv $H/Library $H/aside; cp -r $H/aside $H/other; mv $H/other $H/Library"},
        {"the target of a link written", link, "echo new > $O/target"},
        {"the target of a link replaced", link, "echo new > $O/fresh; mv $O/fresh $O/target"},
        {"a link replaced", link, "echo new > $O/another; ln -s $O/another $L/fresh; mv $L/fresh $F"},
        {"written in a folder behind a link", "mkdir $O; echo > $O/file; rm -r $L; ln -s ../../../outside $L",
         "echo new > $O/file"},
        {"written by another hard link", "mkdir $O; ln $F $O/hard", "echo new > $O/hard"},
        {"its folder mode changed", "", "chmod 755 $L; chmod 700 $L"},
        {"another file written", "", "echo new > $L/fresh", none},
        {"read", "", "cat $F > /dev/null", none},
    };
    setenv("H", home.c_str(), 1);
    setenv("L", library.c_str(), 1);
    setenv("F", file.c_str(), 1);
    setenv("O", folder.path("outside").c_str(), 1);
    const auto run = [](const std::string& commands) { ASSERT_EQ(std::system(("set -e; " + commands).c_str()), 0); };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        run("rm -rf $H $O; mkdir -p $L; echo old > $F;" + row.prepare);
        watcher.follow({file});
        passOverChanges();
        run(row.change);
        EXPECT_EQ(nextChange(), row.expected);
        EXPECT_EQ(nextChange(), none) << "it counts once";
        run("mkdir -p $L; echo new > $L/fresh; mv $L/fresh $F");
        EXPECT_NE(nextChange(), none) << "the next change";
        watcher.follow({});
        EXPECT_EQ(watcher.watchCount(), 0U);
    }
}

TEST_F(FileWatcherTest, WaitsForASlowWriter) {
    watcher.follow({file});
    const int writer = open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    const auto begun = now();
    EXPECT_EQ(nextChange(), Change::none) << "a truncated file is not complete";
    EXPECT_FALSE(watcher.deadline()) << "and needs no timer";
    EXPECT_TRUE(watcher.isUnsettledSince(file, now()));
    ASSERT_EQ(::write(writer, "half", 4), 4);
    EXPECT_EQ(nextChange(), Change::atDeadline);
    EXPECT_TRUE(watcher.isUnsettledSince(file, begun));
    EXPECT_FALSE(watcher.isUnsettledSince(file, now()));
    ASSERT_EQ(::write(writer, "whole", 5), 5);
    close(writer);
    EXPECT_EQ(nextChange(), Change::atOnce);
    EXPECT_EQ(nextChange(), Change::none);
}

TEST_F(FileWatcherTest, ReportsAllFilesWhenTheKernelLosesEvents) {
    const fs::path other = library / "other";
    watcher.follow({file, other});
    std::size_t limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    // The kernel merges events that equal the one before.
    for (std::size_t count = 0; count <= limit; count += 2) {
        fs::rename(file, library / "aside");
        fs::rename(library / "aside", file);
    }
    ASSERT_NE(nextChange(), Change::none);
    EXPECT_THAT(changed, ElementsAre(file, other));
    passOverChanges();
    write("new");
    ASSERT_NE(nextChange(), Change::none);
    EXPECT_THAT(changed, ElementsAre(file));
}

} // namespace
} // namespace host
