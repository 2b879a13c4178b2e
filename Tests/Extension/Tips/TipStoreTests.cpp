#include "Extension/Tips/TipStore.h"

#include "Extension/Tips/TipsCache.h"
#include "Tests/Support/FixedClock.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/MemoryWebClient.h"
#include "Tests/Support/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <iterator>

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

/// A store on fakes, at the moment `now`.
struct Fakes {
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
    std::transform(tips.begin(), tips.end(), std::back_inserter(all), [](const TipItem& tip) { return tip.title; });
    return all;
}

TEST(TipStore, AsksTheWebWhenTheCacheIsSixHoursOldAndNotBefore) {
    for (const double age : {-10 * hour, 0.0, 6 * hour - 1, 6 * hour, 1e12}) {
        const bool downloads = age >= 6 * hour;
        Fakes fakes;
        fakes.keep("kept", age);
        fakes.web.publish(feedAddress, feedOf("new"));
        EXPECT_THAT(titles(fakes.fetchTips()), ElementsAre(downloads ? "new" : "kept")) << age;
        EXPECT_EQ(fakes.web.requests().size(), downloads ? 1U : 0U) << age;
        EXPECT_THAT(fakes.log.lines(), IsEmpty());
    }
}

TEST(TipStore, DownloadsOnceForAllWhoAskMeanwhileAndKeepsIt) {
    Fakes fakes;
    fakes.web.publish(feedAddress, feedOf("new"));
    TipStore store = fakes.store();
    std::vector<std::string> served;
    const auto serve = [&served](const std::vector<TipItem>& tips) { served.push_back(tips.at(0).title); };
    fakes.web.whileLoading = [&] { store.fetchTips(serve); };
    store.fetchTips(serve);
    store.finish();
    EXPECT_THAT(served, ElementsAre("new", "new"));
    fakes.web.fail("down");
    EXPECT_THAT(titles(fakes.fetchTips()), ElementsAre("new"));
    EXPECT_EQ(fakes.web.requests().size(), 1U);
}

TEST(TipStore, FallsBackOnTheLastTipsHoweverOldWhenTheDownloadFails) {
    const LogLine line{LogLevel::error, "TipStore", "Failed to fetch tips feed: the network is down"};
    Fakes fakes;
    fakes.web.fail("the network is down");
    EXPECT_THAT(fakes.fetchTips(), IsEmpty());
    fakes.keep("kept", 1000 * hour);
    EXPECT_THAT(titles(fakes.fetchTips()), ElementsAre("kept"));
    fakes.files.write(cachePath, "broken");
    EXPECT_THAT(fakes.fetchTips(), IsEmpty());
    EXPECT_THAT(fakes.log.lines(), ElementsAre(line, line, line));
    EXPECT_EQ(fakes.files.replacementCount(cachePath), 0);
}

TEST(TipStore, TakesAnAnswerWithoutTipsForWhatItIsAndLeavesTheCacheAlone) {
    for (const char* body : {"", "<html><body>404</body></html>", "<rss><channel/></rss>", "nonsense"}) {
        Fakes fakes;
        fakes.keep("kept", 7 * hour);
        fakes.web.publish(feedAddress, body);
        EXPECT_THAT(fakes.fetchTips(), IsEmpty()) << body;
        EXPECT_EQ(fakes.files.replacementCount(cachePath), 0) << body;
        EXPECT_THAT(fakes.log.lines(), IsEmpty()) << body;
        fakes.web.fail("down");
        EXPECT_THAT(titles(fakes.fetchTips()), ElementsAre("kept")) << body;
    }
}

TEST(TipStore, AnswersAlsoWhatItCannotKeep) {
    Fakes fakes;
    fakes.keep("kept", 7 * hour);
    fakes.web.publish(feedAddress, feedOf("new"));
    fakes.files.limitRoom(10);
    EXPECT_THAT(titles(fakes.fetchTips()), ElementsAre("new"));
    EXPECT_THAT(
        fakes.log.lines(),
        ElementsAre(LogLine{LogLevel::error, "TipStore",
                            "Failed to write tips cache: cannot write /caches/tips_cache.json: No space left on "
                            "device"}));
    fakes.web.fail("down");
    EXPECT_THAT(titles(fakes.fetchTips()), ElementsAre("kept"));
}

TEST(TipStore, ServesAnEmptyFreshCacheAndNoneThatIsBroken) {
    Fakes fakes;
    fakes.web.publish(feedAddress, feedOf("new"));
    fakes.files.write(cachePath, encoded({.timestamp = {now}, .tips = {}}));
    EXPECT_THAT(fakes.fetchTips(), IsEmpty());
    EXPECT_THAT(fakes.web.requests(), IsEmpty());
    fakes.files.write(cachePath, R"({"timestamp":1000000,"tips":[{"title":"without the rest"}]})");
    EXPECT_THAT(titles(fakes.fetchTips()), ElementsAre("new"));
}

TEST(TipStore, AsksForTheLanguageOfTheUsersFirst) {
    const std::pair<std::vector<std::string>, const char*> rows[]{
        {{"de-AT", "en-US"}, "de"}, {{"de"}, "de"}, {{"deu"}, "de"}, {{"en-DE"}, "en"}, {{"DE"}, "en"}, {{}, "en"},
        {{"fr-FR", "de"}, "en"},
    };
    for (const auto& [languages, expected] : rows) {
        EXPECT_EQ(TipStore::feedLanguage(languages), expected);
    }
    Fakes fakes;
    fakes.fetchTips("support.example", {"de-DE"});
    EXPECT_TRUE(fakes.web.requests().at(0).ends_with("&lang=de"));
}

TEST(TipStore, DownloadsNothingFromAHostThatIsNone) {
    Fakes fakes;
    fakes.keep("kept", 7 * hour);
    EXPECT_THAT(titles(fakes.fetchTips("no host")), ElementsAre("kept"));
    EXPECT_THAT(fakes.web.requests(), IsEmpty());
    EXPECT_THAT(fakes.log.lines(), IsEmpty());
}

} // namespace
} // namespace foliovault
