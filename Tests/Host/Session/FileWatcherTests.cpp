// Every way in which a file can change, on the real disk.

#include "Host/Session/FileWatcher.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <sys/stat.h>
#include <thread>
#include <utime.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

/// A home with a library in it, and the watcher of one of its files.
class FileWatcherTest : public ::testing::Test {
  public:
    FileWatcherTest() {
        makeLibrary();
        write("old");
    }

    void makeLibrary() const { fs::create_directories(library); }
    void write(const std::string& text) const { std::ofstream(file) << text; }
    void makeLibraryAndWrite() const {
        makeLibrary();
        write("new");
    }

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
    fs::path file = library / "Favorites.plist";
    fs::path outside = folder.path("outside");
    std::vector<std::string> changed;
    FileWatcher watcher{home, settleTime};
};

TEST_F(FileWatcherTest, NoticesEveryWayToChangeAFile) {
    using enum Change;
    struct Row {
        const char* name;
        std::function<void()> prepare;
        std::function<void()> change;
        Change expected = atOnce;
    };
    const auto nothing = [] {};
    const fs::path fresh = library / "fresh";
    const auto replace = [&] {
        std::ofstream(fresh) << "new";
        fs::rename(fresh, file);
    };
    const auto writeOutside = [&](const char* name) {
        fs::create_directories(outside);
        std::ofstream(outside / name) << "new";
    };
    const auto link = [&] {
        writeOutside("target");
        fs::remove(file);
        fs::create_symlink(outside / "target", file);
    };
    const auto linkFolder = [&] {
        writeOutside("Favorites.plist");
        fs::remove_all(library);
        fs::create_symlink("../../../outside", library);
    };
    const Row rows[]{
        {"written in place", nothing, [&] { write("new"); }},
        {"replaced by a rename", nothing, replace},
        {"touched", nothing, [&] { utime(file.c_str(), nullptr); }},
        {"made readable", [&] { chmod(file.c_str(), 0); }, [&] { chmod(file.c_str(), 0600); }},
        {"removed", nothing, [&] { fs::remove(file); }, atDeadline},
        {"made anew", [&] { fs::remove(file); }, [&] { write("new"); }},
        {"moved away", nothing, [&] { fs::rename(file, fresh); }, atDeadline},
        {"its folder removed", nothing, [&] { fs::remove_all(library); }, atDeadline},
        {"its folder appears", [&] { fs::remove_all(library); }, [&] { makeLibrary(); }, atDeadline},
        {"its folders appear with it", [&] { fs::remove_all(home / "Library"); }, [&] { makeLibraryAndWrite(); },
         atDeadline},
        {"all folders appear with it", [&] { fs::remove_all(home); }, [&] { makeLibraryAndWrite(); }, atDeadline},
        {"its folder replaced", nothing,
         [&] {
             fs::rename(library, home / "aside");
             fs::create_directories(home / "other");
             std::ofstream(home / "other" / "Favorites.plist") << "new";
             fs::rename(home / "other", library);
         }},
        {"a folder above replaced", nothing,
         [&] {
             fs::rename(home / "Library", home / "aside");
             fs::copy(home / "aside", home / "other", fs::copy_options::recursive);
             fs::rename(home / "other", home / "Library");
         }},
        {"the target of a link written", link, [&] { writeOutside("target"); }},
        {"the target of a link replaced", link,
         [&] {
             writeOutside("fresh");
             fs::rename(outside / "fresh", outside / "target");
         }},
        {"a link replaced", link,
         [&] {
             writeOutside("another");
             fs::create_symlink(outside / "another", fresh);
             fs::rename(fresh, file);
         }},
        {"written in a folder behind a link", linkFolder, [&] { writeOutside("Favorites.plist"); }},
        {"written by another hard link",
         [&] {
             fs::create_directories(outside);
             fs::create_hard_link(file, outside / "hard");
         },
         [&] { std::ofstream(outside / "hard") << "new"; }},
        {"its folder mode changed", nothing,
         [&] {
             chmod(library.c_str(), 0755);
             chmod(library.c_str(), 0700);
         }},
        {"another file written", nothing, [&] { std::ofstream(fresh) << "new"; }, none},
        {"read", nothing, [&] { std::ifstream(file).get(); }, none},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const fs::path& place : {home, outside}) {
            fs::remove_all(place);
        }
        makeLibrary();
        write("old");
        row.prepare();
        watcher.follow({file});
        passOverChanges();
        row.change();
        EXPECT_EQ(nextChange(), row.expected);
        EXPECT_EQ(nextChange(), none) << "it counts once";
        // The next change is noticed, too.
        makeLibrary();
        replace();
        EXPECT_NE(nextChange(), none);
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

TEST_F(FileWatcherTest, ReportsChangesBeforeAFileIsFollowed) {
    const auto date = [] {
        const auto time = std::chrono::system_clock::now().time_since_epoch();
        return platform::Date::fromUnixTime(std::chrono::duration<double>(time).count());
    };
    std::this_thread::sleep_for(50ms);
    const auto asked = date();
    watcher.follow({file});
    EXPECT_FALSE(watcher.hasChangedSince(file, asked));
    watcher.follow({});
    write("new");
    watcher.follow({file});
    EXPECT_TRUE(watcher.hasChangedSince(file, asked));
    watcher.follow({});
    fs::remove(file);
    watcher.follow({file});
    EXPECT_TRUE(watcher.hasChangedSince(file, asked));
}

TEST_F(FileWatcherTest, ReportsAllFilesWhenTheKernelLosesEvents) {
    const fs::path other = library / "Other.plist";
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
