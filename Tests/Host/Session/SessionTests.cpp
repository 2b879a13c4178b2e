// A session with real processes on the other side.

#include "Host/Connection/Landlock.h"
#include "Host/Session/Explanation.h"
#include "Host/Session/Session.h"
#include "Platform/Views/Node.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace host {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

std::string textOf(const Tile* tile) {
    const auto* text = tile != nullptr && tile->entry() != nullptr
                           ? std::get_if<platform::Text>(&tile->entry()->view.node().content)
                           : nullptr;
    return text == nullptr ? "" : text->text;
}

/// A session on the fake extension, its loop, and its updates.
class SessionTest : public ::testing::Test, public SessionObserver {
  public:
    void tileUpdated(const Tile& tile, TileUpdate update) override {
        reloaded.push_back(tile.instance().id);
        if (update == TileUpdate::entry) {
            changed.push_back(tile.instance().id);
        }
    }

    static Instance tile(InstanceId id, const std::string& kind, const std::string& text = "",
                         const std::string& extension = "fake") {
        return {.id = id, .extension = extension, .kind = kind, .family = "small", .configuration = {{"text", text}}};
    }

    /// Runs the main loop until `isDone`, at most for ten seconds.
    template <class IsDone>
    bool runUntil(IsDone isDone) {
        const auto end = std::chrono::steady_clock::now() + 10s;
        iterate();
        while (!isDone()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(1ms);
            iterate();
        }
        return true;
    }
    /// Does what is to be done now.
    void iterate() {
        for (bool isMore = true; isMore;) {
            const auto start = std::chrono::steady_clock::now();
            isMore = g_main_context_iteration(nullptr, FALSE) != FALSE;
            longestStep = std::max(longestStep, std::chrono::steady_clock::now() - start);
        }
    }
    bool runUntilSettled() {
        return runUntil([this] {
            return std::none_of(session.tiles().begin(), session.tiles().end(),
                                [](const auto& each) { return each.second.awaited().has_value(); });
        });
    }
    /// Until no extension runs, and the main loop would not wake up by itself.
    bool runUntilAlone() {
        return runUntil([] {
            siginfo_t child{};
            const bool hasChildren = waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0;
            int priority = 0;
            int milliseconds = 0;
            g_main_context_acquire(g_main_context_default());
            g_main_context_prepare(g_main_context_default(), &priority);
            std::array<GPollFD, 64> descriptors{};
            g_main_context_query(g_main_context_default(), G_MAXINT, &milliseconds, descriptors.data(),
                                 descriptors.size());
            g_main_context_release(g_main_context_default());
            return !hasChildren && milliseconds == -1;
        });
    }
    std::string failure(InstanceId id) {
        const auto& last = session.tile(id)->history().lastFailure;
        return last ? last->message : "";
    }

    std::filesystem::path home = [] {
        std::string name = (std::filesystem::temp_directory_path() / "session-XXXXXX").string();
        return std::filesystem::path(mkdtemp(name.data()));
    }();
    void TearDown() override { std::filesystem::remove_all(home); }

    std::vector<InstanceId> changed;
    std::vector<InstanceId> reloaded;
    int starts = 0;
    std::chrono::steady_clock::duration longestStep{};
    std::vector<std::string> reads;
    std::filesystem::path executable = FAKE_EXTENSION;
    Session session{
        {.findManifest = [this](const std::string& identifier) -> platform::Outcome<Manifest> {
             if (identifier == "gone") {
                 return platform::Unexpected{platform::Failure{.message = "no extension \"gone\" is installed"}};
             }
             return Manifest{.identifier = identifier, .name = identifier, .executable = executable, .reads = reads};
         },
         .startExtension =
             [this](const Manifest& manifest) {
                 ++starts;
                 return ExtensionClient::start(manifest, home, Confined::yes,
                                               {.response = 1s, .idle = 300ms, .shutdown = 200ms});
             },
         .clock = platform::SystemClock::shared(),
         .observer = *this,
         .home = home,
         .warn = nullptr}};
};

TEST_F(SessionTest, RequestsDueTilesTogetherAndEndsAnIdleExtension) {
    session.setTiles({tile(1, "Good", "one"), tile(2, "Good", "two"), tile(3, "Several")});
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(textOf(session.tile(1)), StartsWith("one by"));
    EXPECT_EQ(textOf(session.tile(1)).substr(4), textOf(session.tile(2)).substr(4));
    EXPECT_EQ(textOf(session.tile(3)), "now");
    EXPECT_EQ(starts, 1);
    EXPECT_THAT(changed, ElementsAre(1, 2, 3));
    EXPECT_EQ(session.tile(1)->schedule().due(), *platform::fromRfc3339("2200-01-01T00:00:00Z"));
    EXPECT_TRUE(runUntilAlone());
}

TEST_F(SessionTest, SlowRequestsDelayNoOther) {
    std::vector<Instance> tiles;
    for (InstanceId id = 1; id <= 200; ++id) {
        tiles.push_back(tile(id, "Later"));
    }
    tiles.push_back(tile(201, "Good"));
    session.setTiles(tiles);
    ASSERT_TRUE(runUntilSettled());
    EXPECT_EQ(reloaded.front(), 201U);
    EXPECT_EQ(textOf(session.tile(1)), "late");
    EXPECT_EQ(failure(200), "");
    EXPECT_EQ(starts, 1);
}

TEST_F(SessionTest, RequestsNewAndChangedTilesAlone) {
    session.setTiles({tile(1, "Good", "one"), tile(2, "Good", "two")});
    ASSERT_TRUE(runUntilSettled());
    ASSERT_TRUE(runUntilAlone());
    const std::string first = textOf(session.tile(1));
    session.setTiles({tile(2, "Good", "changed"), tile(3, "Same"), tile(1, "Good", "one")});
    EXPECT_THAT(textOf(session.tile(2)), StartsWith("two")) << "it shows the last entry until another comes";
    ASSERT_TRUE(runUntilSettled());
    EXPECT_EQ(textOf(session.tile(1)), first);
    EXPECT_THAT(textOf(session.tile(2)), StartsWith("changed"));
    session.setTiles({tile(3, "Same")});
    EXPECT_EQ(session.tile(1), nullptr);
    EXPECT_EQ(session.tiles().size(), 1U);
}

TEST_F(SessionTest, ReportsOnlyOtherEntries) {
    session.setTiles({tile(1, "Same"), tile(2, "Good")});
    ASSERT_TRUE(runUntilSettled());
    changed.clear();
    int calls = 0;
    session.reload("Same", [&](const auto& failures) {
        EXPECT_THAT(failures, IsEmpty());
        ++calls;
    });
    ASSERT_TRUE(runUntil([&] { return calls == 1; }));
    EXPECT_THAT(changed, IsEmpty());
    ASSERT_TRUE(runUntilAlone());
    session.reload(std::nullopt, [&](const auto& /*failures*/) { ++calls; });
    ASSERT_TRUE(runUntil([&] { return calls == 2; }));
    EXPECT_THAT(changed, ElementsAre(2));
    session.reload("None", [&](const auto& /*failures*/) { ++calls; });
    EXPECT_EQ(calls, 3);
}

TEST_F(SessionTest, KeepsEntriesWhateverTheExtensionDoes) {
    struct Row {
        const char* kind;
        const char* reason;
        TileFailure::Cause cause = TileFailure::Cause::stopped;
    };
    constexpr auto invalid = TileFailure::Cause::invalidResponse;
    const Row rows[]{
        {"Die", "exited with 3: last words"},
        {"Stop", "was silent for 1 seconds"},
        {"Close", "closed its output"},
        {"Silent", "was silent for 1 seconds"},
        {"Nonsense", "sent something other than a message"},
        {"Flood", "too many unrequested messages"},
        {"Long", "more than 8388608 bytes"},
        {"Complain", "was killed by signal 13: complaint"},
        {"Deep", "is invalid", invalid},
        {"NoReload", "without a reload date", invalid},
        {"Refuse", "no such choice", invalid},
    };
    for (const Row& row : rows) {
        session.setTiles({tile(1, "Good", "kept"), tile(2, "Good", "other", "another")});
        ASSERT_TRUE(runUntilSettled());
        session.setTiles({tile(1, row.kind), tile(2, "Good", "other", "another")});
        ASSERT_TRUE(runUntil([&] { return !failure(1).empty(); })) << row.kind;
        EXPECT_THAT(failure(1), HasSubstr(row.reason)) << row.kind;
        EXPECT_EQ(session.tile(1)->history().lastFailure->cause, row.cause) << row.kind;
        EXPECT_THAT(textOf(session.tile(1)), StartsWith("kept")) << row.kind;
        EXPECT_EQ(session.tile(1)->schedule().failures(), 1) << row.kind;
        const double wait = session.tile(1)->schedule().due().secondsSinceReferenceDate -
                            session.tile(1)->history().lastFailure->date.secondsSinceReferenceDate;
        EXPECT_NEAR(wait, 5.5, 0.51) << row.kind;
        EXPECT_EQ(failure(2), "") << row.kind;
        session.setTiles({});
        ASSERT_TRUE(runUntilAlone()) << row.kind << " is left";
        // A desktop would stand still meanwhile.
        EXPECT_LT(std::exchange(longestStep, {}), 400ms) << row.kind;
    }
}

TEST_F(SessionTest, RepeatsRequestsWhenAReadableFolderIsReplaced) {
    if (landlockVersion() == 0) {
        GTEST_SKIP() << "without Landlock an extension sees every new folder";
    }
    reads = {"Library"};
    const auto library = home / "Library";
    std::filesystem::create_directory(library);
    auto replaceLibrary = [&, count = 0]() mutable {
        std::filesystem::rename(library, home / std::to_string(++count));
        std::filesystem::create_directory(library);
    };
    session.setTiles({tile(1, "Slow")});
    iterate();
    replaceLibrary();
    session.setTiles({tile(1, "Slow"), tile(2, "Slow")});
    iterate();
    replaceLibrary();
    session.setTiles({tile(1, "Slow"), tile(2, "Slow"), tile(3, "Slow")});
    ASSERT_TRUE(runUntilSettled());
    EXPECT_EQ(starts, 3);
    EXPECT_EQ(failure(1) + failure(2) + failure(3), "");
    EXPECT_EQ(textOf(session.tile(2)), textOf(session.tile(3))) << "the newest process has answered both";
    EXPECT_NE(textOf(session.tile(1)), textOf(session.tile(2))) << "a request is sent twice at most";
}

TEST_F(SessionTest, SaysWhyNoExtensionStarts) {
    std::vector<std::string> failures;
    session.setTiles({tile(1, "Good", "", "gone")});
    session.reload(std::nullopt, [&](const auto& all) { failures = all; });
    iterate();
    EXPECT_THAT(failures, ElementsAre("1: no extension \"gone\" is installed"));
    executable = "/nowhere/at/all";
    session.setTiles({tile(2, "Good")});
    iterate();
    EXPECT_THAT(failure(2), HasSubstr("/nowhere/at/all"));
    EXPECT_EQ(session.tile(2)->history().lastFailure->cause, TileFailure::Cause::notStarted);
}

TEST_F(SessionTest, IgnoresOutdatedResponses) {
    session.setTiles({tile(1, "Silent", "old")});
    iterate();
    session.setTiles({tile(1, "Good", "new")});
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(textOf(session.tile(1)), StartsWith("new"));
    ASSERT_TRUE(runUntilAlone());
    EXPECT_EQ(failure(1), "");
    EXPECT_THAT(textOf(session.tile(1)), StartsWith("new"));
}

TEST_F(SessionTest, SendsRequestsAndReturnsEachResponse) {
    std::vector<std::string> answers;
    const auto ask = [&](const std::string& kind, const std::string& extension = "fake") {
        session.request(extension, "timeline", R"({"kind":")" + kind + R"(","configuration":{"text":"asked"}})",
                        [&](const auto& result) { answers.push_back(result ? "answered" : result.error().message); });
    };
    session.setTiles({tile(1, "Good", "one")});
    for (const char* kind : {"Good", "Refuse"}) {
        ask(kind);
    }
    ask("Good", "gone");
    ASSERT_TRUE(runUntil([&] { return answers.size() == 3; }));
    EXPECT_THAT(answers, ::testing::UnorderedElementsAre("answered", HasSubstr("no"), HasSubstr("\"gone\"")));
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(textOf(session.tile(1)), StartsWith("one by")) << "requests do not touch tiles";
    // The extension dies before it responds.
    ask("Die");
    ASSERT_TRUE(runUntil([&] { return answers.size() == 4; }));
    EXPECT_NE(answers.back(), "answered");
}

TEST_F(SessionTest, RequestsAllTilesInAnotherRenderingMode) {
    session.setTiles({tile(1, "Good"), tile(2, "Same")});
    ASSERT_TRUE(runUntilSettled());
    reloaded.clear();
    session.setRenderingMode(Arrangement::fullColor);
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(reloaded, IsEmpty());
    session.setRenderingMode("tinted");
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(reloaded, ElementsAre(1, 2));
}

/// A session with a tile of a file in the home.
class FollowingTest : public SessionTest {
  public:
    FollowingTest() {
        reads = {"Library"};
        std::filesystem::create_directory(home / "Library");
        write("first");
    }
    void write(const std::string& text) const { std::ofstream(file) << text; }
    void replace(const std::string& text) const {
        std::ofstream(home / "Library" / "fresh") << text;
        std::filesystem::rename(home / "Library" / "fresh", file);
    }
    bool runUntilShown(const std::string& text, InstanceId id = 1) {
        return runUntil([&] { return textOf(session.tile(id)) == text; }) && runUntilSettled();
    }

    std::filesystem::path file = home / "Library" / "file";
};

TEST_F(FollowingTest, RequestsTilesWhoseFileChanges) {
    session.setTiles({tile(1, "File", "Library/file"), tile(2, "File", "Library/file"), tile(3, "Good")});
    ASSERT_TRUE(runUntilShown("first"));
    ASSERT_TRUE(runUntilAlone());
    EXPECT_THAT(session.tile(1)->watches(), ElementsAre(file.string())) << "what may not be read is not followed";
    reloaded.clear();
    starts = 0;
    replace("second");
    ASSERT_TRUE(runUntilShown("second"));
    ASSERT_TRUE(runUntilShown("second", 2));
    EXPECT_THAT(reloaded, ElementsAre(1, 2));
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(session.tile(1)->history().reason, file.string() + " changed");
}

TEST_F(FollowingTest, NoticesAChangeDuringTheFirstRequest) {
    session.setTiles({tile(1, "SlowFile", "Library/file")});
    iterate();
    std::this_thread::sleep_for(50ms);
    replace("second");
    EXPECT_TRUE(runUntilShown("second"));
}

TEST_F(FollowingTest, NeverShowsAFileThatIsBeingWritten) {
    session.setTiles({tile(1, "SlowFile", "Library/file")});
    ASSERT_TRUE(runUntilShown("first"));
    std::vector<std::string> shown;
    // Read while it is empty, and answered before, while and after it is whole.
    for (const auto pause : {0ms, 60ms, 150ms, 450ms}) {
        {
            std::ofstream writer(file, std::ios::trunc);
            session.reload(1);
            const auto end = std::chrono::steady_clock::now() + pause;
            runUntil([&] {
                shown.push_back(textOf(session.tile(1)));
                return std::chrono::steady_clock::now() >= end;
            });
            writer << pause.count();
        }
        ASSERT_TRUE(runUntil([&] {
            shown.push_back(textOf(session.tile(1)));
            return shown.back() == std::to_string(pause.count());
        })) << pause.count();
    }
    EXPECT_THAT(shown, ::testing::Not(::testing::Contains(std::string())));
}

TEST_F(FollowingTest, RequestsFourTimesASecondAndShowsTheLast) {
    session.setTiles({tile(1, "File", "Library/file")});
    ASSERT_TRUE(runUntilShown("first"));
    reloaded.clear();
    int saves = 0;
    const auto end = std::chrono::steady_clock::now() + 1s;
    ASSERT_TRUE(runUntil([&] {
        saves % 2 == 0 ? replace(std::to_string(saves)) : write(std::to_string(saves));
        ++saves;
        return std::chrono::steady_clock::now() >= end;
    }));
    EXPECT_TRUE(runUntilShown(std::to_string(saves - 1)));
    EXPECT_LE(reloaded.size(), 6U) << "one at once, four a second, and the last";
    EXPECT_GE(saves, 20);
}

TEST_F(FollowingTest, RequestsTilesOfFilesAfterTheMachineSlept) {
    session.setTiles({tile(1, "File", "Library/file"), tile(2, "Good")});
    ASSERT_TRUE(runUntilShown("first"));
    reloaded.clear();
    session.clockChanged();
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(reloaded, ElementsAre(1));
}

TEST_F(SessionTest, KillsAnExtensionThatDoesNotExit) {
    setenv("LANG", "stay", 1);
    session.setTiles({tile(1, "Good")});
    ASSERT_TRUE(runUntilSettled());
    EXPECT_TRUE(runUntilAlone());
    EXPECT_EQ(failure(1), "");
    unsetenv("LANG");
}

TEST(Explanation, FollowsTheTimeZone) {
    const Tile tile(SessionTest::tile(1, "Good"), *platform::fromRfc3339("2026-03-16T23:56:00Z"));
    for (const auto& [zone, moment] : {std::pair{"UTC0", "2026-03-16 23:56:00"}, {"JST-9", "2026-03-17 08:56:00"}}) {
        setenv("TZ", zone, 1);
        EXPECT_THAT(explanation(tile, tile.schedule().due()), HasSubstr(moment));
    }
    unsetenv("TZ");
}

} // namespace
} // namespace host
