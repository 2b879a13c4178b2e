// A session with real processes on the other side.

#include "Host/Connection/Landlock.h"
#include "Host/Session/Explanation.h"
#include "Host/Session/Session.h"
#include "Platform/Views/Node.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <thread>

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

/// A session on the fake extension, its loop, and its updates. An extension named "hasty" has little time to respond.
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

    /// Runs the main loop until `isDone`, at most for a minute.
    template <class IsDone>
    bool runUntil(IsDone isDone) {
        const auto end = std::chrono::steady_clock::now() + 60s;
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
    /// Dispatches what is ready now.
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
    /// Until no extension runs.
    bool runUntilAlone() {
        return runUntil([] {
            siginfo_t child{};
            return waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) != 0;
        });
    }
    std::string failure(InstanceId id) {
        const auto& last = session.tile(id)->history().lastFailure;
        return last ? last->message : "";
    }

    const platform::TemporaryFolder folder;
    const std::filesystem::path home = folder.path("home");
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
                 const auto response = manifest.identifier == "hasty" ? 300ms : 60s;
                 return ExtensionClient::start(manifest, home, Confined::yes,
                                               {.response = response, .idle = 300ms, .shutdown = 200ms});
             },
         .clock = platform::SystemClock::shared(),
         .observer = *this,
         .home = home,
         .warn = nullptr}};
};

TEST_F(SessionTest, RequestsDueTilesTogetherAndEndsAnIdleExtension) {
    session.setTiles({tile(1, "Good", "one"), tile(2, "Good", "two"), tile(3, "Several"), tile(4, "Stay")});
    ASSERT_TRUE(runUntilSettled());
    EXPECT_EQ(textOf(session.tile(1)).substr(4), textOf(session.tile(2)).substr(4));
    EXPECT_EQ(textOf(session.tile(3)), "now");
    EXPECT_EQ(session.tile(3)->nextEvent(), *platform::fromRfc3339("2100-01-01T00:00:00Z"));
    EXPECT_EQ(starts, 1);
    EXPECT_THAT(changed, ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(session.tile(1)->schedule().due(), *platform::fromRfc3339("2200-01-01T00:00:00Z"));
    EXPECT_TRUE(runUntilAlone()) << "it is killed if it does not exit";
    EXPECT_EQ(failure(4), "");
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

TEST_F(SessionTest, RequestsNewAndChangedTilesAloneAndReportsOtherEntries) {
    session.setTiles({tile(1, "Good", "one"), tile(2, "Good", "two")});
    ASSERT_TRUE(runUntilSettled());
    ASSERT_TRUE(runUntilAlone());
    const std::string first = textOf(session.tile(1));
    session.setTiles({tile(2, "Good", "changed"), tile(3, "Same"), tile(1, "Good", "one")});
    EXPECT_THAT(textOf(session.tile(2)), StartsWith("two")) << "it shows the last entry until another comes";
    ASSERT_TRUE(runUntilSettled());
    EXPECT_EQ(textOf(session.tile(1)), first);
    EXPECT_THAT(textOf(session.tile(2)), StartsWith("changed"));
    session.setTiles({tile(1, "Good", "one"), tile(3, "Same")});
    EXPECT_EQ(session.tile(2), nullptr);
    ASSERT_TRUE(runUntilAlone());
    changed.clear();
    int calls = 0;
    session.reload(std::nullopt, [&](const auto& failures) {
        EXPECT_THAT(failures, IsEmpty());
        ++calls;
    });
    ASSERT_TRUE(runUntil([&] { return calls == 1; }));
    EXPECT_THAT(changed, ElementsAre(1));
    session.reload("None", [&](const auto& /*failures*/) { ++calls; });
    EXPECT_EQ(calls, 2);
    session.setTiles({tile(1, "Good", "", "gone")});
    session.reload(std::nullopt, [&](const auto& failures) {
        EXPECT_THAT(failures, ElementsAre("1: no extension \"gone\" is installed"));
        ++calls;
    });
    ASSERT_TRUE(runUntil([&] { return calls == 3; }));
}

TEST_F(SessionTest, KeepsEntriesWhateverTheExtensionDoes) {
    struct Row {
        const char* kind;
        const char* reason;
        const char* extension = "fake";
        TileFailure::Cause cause = TileFailure::Cause::stopped;
    };
    constexpr auto invalid = TileFailure::Cause::invalidResponse;
    const Row rows[]{
        {"Good", "no extension \"gone\" is installed", "gone", TileFailure::Cause::notStarted},
        {"Die", "exited with 3: last words"},
        {"Stop", "was silent for 0.3 seconds", "hasty"},
        {"Silent", "was silent for 0.3 seconds", "hasty"},
        {"Close", "closed its output"},
        {"Nonsense", "sent something other than a message"},
        {"Flood", "too many unrequested messages"},
        {"Long", "more than 8388608 bytes"},
        {"Complain", "was killed by signal 13: complaint"},
        {"Deep", "is invalid", "fake", invalid},
        {"NoReload", "without a reload date", "fake", invalid},
        {"Refuse", "no such choice", "fake", invalid},
    };
    const auto failAs = [&](const Row& row) {
        session.setTiles({tile(1, "Good", "kept"), tile(2, "Good", "other", "another")});
        ASSERT_TRUE(runUntilSettled());
        session.setTiles({tile(1, row.kind, "", row.extension), tile(2, "Good", "other", "another")});
        ASSERT_TRUE(runUntil([&] { return !failure(1).empty(); }));
        EXPECT_THAT(failure(1), HasSubstr(row.reason));
        EXPECT_EQ(session.tile(1)->history().lastFailure->cause, row.cause);
        EXPECT_THAT(textOf(session.tile(1)), StartsWith("kept"));
        EXPECT_EQ(session.tile(1)->schedule().failures(), 1);
        const double wait = session.tile(1)->schedule().due().secondsSinceReferenceDate -
                            session.tile(1)->history().lastFailure->date.secondsSinceReferenceDate;
        EXPECT_NEAR(wait, 5.5, 0.51);
        EXPECT_EQ(failure(2), "");
        session.setTiles({});
        ASSERT_TRUE(runUntilAlone()) << "it is left";
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.kind);
        // A desktop stands still during a step. On a busy machine one may be slow by accident.
        auto longest = std::chrono::steady_clock::duration::max();
        for (int attempt = 0; attempt < 5 && longest > 400ms; ++attempt) {
            longestStep = {};
            failAs(row);
            longest = std::min(longest, longestStep);
        }
        EXPECT_LT(longest, 400ms);
    }
}

TEST_F(SessionTest, RepeatsRequestsWhenAReadableFolderIsReplaced) {
    if (landlockVersion() == 0) {
        GTEST_SKIP() << "without Landlock an extension sees every new folder";
    }
    reads = {"Library"};
    const auto library = home / "Library";
    std::filesystem::create_directories(library);
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

TEST_F(SessionTest, IgnoresOutdatedResponses) {
    session.setTiles({tile(1, "Later")});
    iterate();
    session.setTiles({tile(1, "Good", "new")});
    ASSERT_TRUE(runUntilSettled());
    ASSERT_TRUE(runUntilAlone());
    EXPECT_EQ(failure(1), "");
    EXPECT_THAT(textOf(session.tile(1)), StartsWith("new"));
}

TEST_F(SessionTest, SendsRequestsAndReturnsEachResponse) {
    std::vector<std::string> answers;
    const auto send = [&](const std::string& kind, const std::string& extension = "fake") {
        session.request(extension, "timeline", R"({"kind":")" + kind + R"(","configuration":{}})",
                        [&](const auto& result) { answers.push_back(result ? "answered" : result.error().message); });
    };
    session.setTiles({tile(1, "Good", "one")});
    send("Good");
    send("Refuse");
    send("Good", "gone");
    ASSERT_TRUE(runUntil([&] { return answers.size() == 3; }));
    EXPECT_THAT(answers, ::testing::UnorderedElementsAre("answered", "no such choice", HasSubstr("\"gone\"")));
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(textOf(session.tile(1)), StartsWith("one by")) << "requests do not touch tiles";
    send("Die");
    ASSERT_TRUE(runUntil([&] { return answers.size() == 4; }));
    EXPECT_THAT(answers.back(), HasSubstr("exited"));
}

TEST_F(SessionTest, RequestsAllTilesInAnotherRenderingMode) {
    session.setTiles({tile(1, "Good"), tile(2, "Same")});
    ASSERT_TRUE(runUntilSettled());
    for (const auto& [mode, expected] :
         {std::pair{"fullColor", std::vector<InstanceId>{}}, {"tinted", std::vector<InstanceId>{1, 2}}}) {
        reloaded.clear();
        session.setRenderingMode(mode);
        ASSERT_TRUE(runUntilSettled());
        EXPECT_EQ(reloaded, expected);
    }
}

/// A session with a tile of a file in the home.
class FollowingTest : public SessionTest {
  public:
    FollowingTest() {
        reads = {"Library"};
        std::filesystem::create_directories(home / "Library");
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
    reloaded.clear();
    // After sleep as well.
    session.clockChanged();
    ASSERT_TRUE(runUntilSettled());
    EXPECT_THAT(reloaded, ElementsAre(1, 2));
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
    std::set<std::string> shown;
    const auto shows = [&](const std::string& text) {
        shown.insert(textOf(session.tile(1)));
        return textOf(session.tile(1)) == text;
    };
    // Read while it is empty, and answered before, while and after it is whole.
    for (const auto pause : {0ms, 60ms, 150ms, 450ms}) {
        const std::string whole = std::to_string(pause.count());
        {
            std::ofstream writer(file, std::ios::trunc);
            session.reload(1);
            const auto end = std::chrono::steady_clock::now() + pause;
            runUntil([&] { return shows(whole) || std::chrono::steady_clock::now() >= end; });
            writer << whole;
        }
        ASSERT_TRUE(runUntil([&] { return shows(whole); })) << whole;
    }
    EXPECT_FALSE(shown.contains(""));
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
