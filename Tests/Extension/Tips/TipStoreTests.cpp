#include "Extension/Tips/TipStore.h"

#include "Extension/Tips/TipsCache.h"
#include "Tests/Support/FixedClock.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/MemoryWebClient.h"
#include "Tests/Support/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

namespace foliovault {
namespace {

using platform::LogLevel;
using platform::LogLine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* cachePath = "/caches/tips_cache.json";
constexpr const char* feedAddress = "https://support.example/2/apps/supportmaterials.xml.php"
                                    "?product=FOLIOvault&edition=Pro&version=4&lang=en";
constexpr double now = 1'000'000;
constexpr double hour = 3600;

std::string feedOf(const std::string& title) {
    return "<rss><channel><item><title>" + title +
           "</title><category>Tips</category><link>https://blog.example/a</link>"
           "<pubDate>Tue, 04 Mar 2025 09:30:00 +0100</pubDate></item></channel></rss>";
}

/// A store with everything around it made up, at the moment `now`.
struct MadeUp {
    platform::MemoryFileSystem files;
    platform::MemoryWebClient web;
    platform::FixedClock clock{{now}};
    platform::RecordingLog log;

    TipStore store(std::string host = "support.example", std::vector<std::string> languages = {}) {
        return TipStore({.files = files,
                         .web = web,
                         .clock = clock,
                         .log = log,
                         .cachesFolder = "/caches",
                         .languages = std::move(languages),
                         .feedHost = std::move(host)});
    }
    std::vector<TipItem> fetchTips(std::string host = "support.example", std::vector<std::string> languages = {}) {
        TipStore store = this->store(std::move(host), std::move(languages));
        std::promise<std::vector<TipItem>> fetched;
        store.fetchTips([&](const std::vector<TipItem>& tips) { fetched.set_value(tips); });
        return fetched.get_future().get();
    }
    void keep(const std::string& title, double age) {
        files.write(cachePath, encoded({.timestamp = {now - age}, .tips = {{.title = title, .guid = "kept"}}}));
    }
};

std::vector<std::string> titles(const std::vector<TipItem>& tips) {
    std::vector<std::string> all;
    for (const TipItem& tip : tips) {
        all.push_back(tip.title);
    }
    return all;
}

TEST(TipStore, AsksTheWebWhenTheCacheIsSixHoursOldAndNotBefore) {
    struct Row {
        double age;
        bool downloads;
    };
    for (const Row& row : {Row{-10 * hour, false}, Row{0, false}, Row{5 * hour, false}, Row{21'599, false},
                           Row{21'600, true}, Row{7 * hour, true}, Row{1e12, true}}) {
        MadeUp around;
        around.keep("kept", row.age);
        around.web.publish(feedAddress, feedOf("new"));
        EXPECT_THAT(titles(around.fetchTips()), ElementsAre(row.downloads ? "new" : "kept")) << row.age;
        EXPECT_EQ(around.web.requests().size(), row.downloads ? 1U : 0U) << row.age;
        EXPECT_THAT(around.log.lines(), IsEmpty());
    }
}

TEST(TipStore, KeepsWhatItDownloadedForSixHours) {
    MadeUp around;
    around.web.publish(feedAddress, feedOf("new"));
    const auto tips = around.fetchTips();
    EXPECT_THAT(titles(tips), ElementsAre("new"));
    around.web.fail("down");
    around.clock.advance(21'599);
    EXPECT_EQ(around.fetchTips(), tips);
    EXPECT_EQ(around.web.requests().size(), 1U);
    around.clock.advance(1);
    EXPECT_EQ(around.fetchTips(), tips);
    EXPECT_EQ(around.web.requests().size(), 2U);
}

TEST(TipStore, FallsBackOnTheLastTipsHoweverOldWhenTheDownloadFails) {
    const LogLine line{LogLevel::error, "TipStore", "Failed to fetch tips feed: the network is down"};
    MadeUp around;
    around.web.fail("the network is down");
    EXPECT_THAT(around.fetchTips(), IsEmpty());
    around.keep("kept", 1000 * hour);
    EXPECT_THAT(titles(around.fetchTips()), ElementsAre("kept"));
    around.files.write(cachePath, "broken");
    EXPECT_THAT(around.fetchTips(), IsEmpty());
    EXPECT_THAT(around.log.lines(), ElementsAre(line, line, line));
    EXPECT_EQ(around.files.replacementCount(cachePath), 0);
}

TEST(TipStore, TakesAnAnswerWithoutTipsForWhatItIsAndLeavesTheCacheAlone) {
    for (const char* body : {"", "<html><body>404</body></html>", "<rss><channel/></rss>", "nonsense"}) {
        MadeUp around;
        around.keep("kept", 7 * hour);
        around.web.publish(feedAddress, body);
        EXPECT_THAT(around.fetchTips(), IsEmpty()) << body;
        EXPECT_EQ(around.files.replacementCount(cachePath), 0) << body;
        EXPECT_THAT(around.log.lines(), IsEmpty()) << body;
        around.web.fail("down");
        EXPECT_THAT(titles(around.fetchTips()), ElementsAre("kept")) << body;
    }
}

TEST(TipStore, AnswersAlsoWhatItCannotKeep) {
    MadeUp around;
    around.keep("kept", 7 * hour);
    around.web.publish(feedAddress, feedOf("new"));
    around.files.limitRoom(10);
    EXPECT_THAT(titles(around.fetchTips()), ElementsAre("new"));
    EXPECT_THAT(
        around.log.lines(),
        ElementsAre(LogLine{LogLevel::error, "TipStore",
                            "Failed to write tips cache: cannot write /caches/tips_cache.json: No space left on "
                            "device"}));
    around.web.fail("down");
    EXPECT_THAT(titles(around.fetchTips()), ElementsAre("kept"));
}

TEST(TipStore, ServesAnEmptyFreshCacheAndNoneThatIsBroken) {
    MadeUp around;
    around.web.publish(feedAddress, feedOf("new"));
    around.files.write(cachePath, encoded({.timestamp = {now}, .tips = {}}));
    EXPECT_THAT(around.fetchTips(), IsEmpty());
    EXPECT_THAT(around.web.requests(), IsEmpty());
    around.files.write(cachePath, R"({"timestamp":1000000,"tips":[{"title":"without the rest"}]})");
    EXPECT_THAT(titles(around.fetchTips()), ElementsAre("new"));
}

TEST(TipStore, AsksForTheLanguageOfTheUsersFirst) {
    const std::pair<std::vector<std::string>, const char*> rows[]{
        {{"de-AT", "en-US"}, "de"}, {{"de"}, "de"}, {{"deu"}, "de"}, {{"en-DE"}, "en"}, {{"DE"}, "en"}, {{}, "en"},
        {{"fr-FR", "de"}, "en"},
    };
    for (const auto& [languages, expected] : rows) {
        EXPECT_EQ(TipStore::feedLanguage(languages), expected);
    }
    MadeUp around;
    around.fetchTips("support.example", {"de-DE"});
    EXPECT_TRUE(around.web.requests().at(0).ends_with("&lang=de"));
}

TEST(TipStore, DownloadsNothingFromAHostThatIsNone) {
    MadeUp around;
    around.keep("kept", 7 * hour);
    EXPECT_THAT(titles(around.fetchTips("no host")), ElementsAre("kept"));
    EXPECT_THAT(around.web.requests(), IsEmpty());
    EXPECT_THAT(around.log.lines(), IsEmpty());
}

} // namespace
} // namespace foliovault
