// The Tips widget: its cache, store, provider and views.

#include "Extension/Tips/TipsCache.h"
#include "Extension/Tips/TipsViews.h"
#include "Extension/Tips/TipsWidget.h"

#include "Tests/Support/Fakes.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace foliovault {
namespace {

using namespace platform;
using ::testing::ElementsAre;

constexpr const char* cachePath = "/caches/tips_cache.json";
constexpr double now = 1'000'000;
constexpr double hour = 3600;

/// A day that does not depend on the time.
struct FixedCalendar final : Calendar {
    CalendarDay day;
    std::optional<Date> next;
    CalendarDay dayOf(Date /*date*/) const override { return day; }
    std::optional<Date> startOfNextDay(Date /*date*/) const override { return next; }
};

/// A store at the moment `now`.
struct Fakes {
    std::string host = "support.example";
    std::vector<std::string> languages = {};
    MemoryFileSystem files{};
    MemoryWebClient web{};
    FixedClock clock{{now}};
    RecordingLog log{};
    TipStore store{{.files = files,
                    .web = web,
                    .clock = clock,
                    .log = log,
                    .cachesFolder = "/caches",
                    .languages = languages,
                    .feedHost = host}};

    /// Returns the titles of the tips.
    std::string fetchTips() {
        std::string titles;
        store.fetchTips([&](const std::vector<TipItem>& tips) {
            for (const TipItem& tip : tips) {
                titles += tip.title;
            }
        });
        store.finish();
        return titles;
    }
    void publish(const std::string& page) {
        web.pages["https://support.example/2/apps/supportmaterials.xml.php"
                  "?product=FOLIOvault&edition=Pro&version=4&lang=en"] = page;
    }
};

std::string cacheOf(const std::string& title, double age) {
    return encoded({.timestamp = {now - age}, .tips = {{.title = title}}});
}

const std::string newFeed = "<rss><channel><item><title>new</title><category>Tips</category>"
                            "<pubDate>Tue, 04 Mar 2025 09:30:00 +0100</pubDate></item></channel></rss>";

TEST(TipStore, ServesAFreshCacheElseTheWebElseAnyCache) {
    const LogLine failure{LogLevel::error, "TipStore", "Failed to fetch tips feed: the network is down"};
    struct Row {
        std::string cache;
        /// The feed; without it the download fails.
        std::optional<std::string> page;
        const char* shown;
        std::size_t requests;
        int replacements;
    };
    const Row rows[]{
        {cacheOf("kept", -10 * hour), newFeed, "kept", 0, 0},
        {cacheOf("kept", 6 * hour - 1), newFeed, "kept", 0, 0},
        {R"({"timestamp":1000000,"tips":[]})", newFeed, "", 0, 0},
        {cacheOf("kept", 6 * hour), newFeed, "new", 1, 1},
        {R"({"timestamp":1000000,"tips":[{"title":"without the rest"}]})", newFeed, "new", 1, 1},
        // A page without tips leaves the cache alone.
        {cacheOf("kept", 7 * hour), "<html><body>404</body></html>", "", 1, 0},
        {cacheOf("kept", 1000 * hour), std::nullopt, "kept", 1, 0},
        {"broken", std::nullopt, "", 1, 0},
    };
    for (const Row& row : rows) {
        Fakes fakes;
        fakes.files.write(cachePath, row.cache);
        fakes.publish(row.page.value_or(""));
        fakes.web.failure = row.page ? std::nullopt : std::optional("the network is down");
        EXPECT_EQ(fakes.fetchTips(), row.shown) << row.cache;
        EXPECT_EQ(fakes.web.requests.size(), row.requests) << row.cache;
        EXPECT_EQ(fakes.files.replacementCount(cachePath), row.replacements) << row.cache;
        EXPECT_EQ(fakes.log.lines, row.page ? std::vector<LogLine>() : std::vector{failure}) << row.cache;
    }
}

TEST(TipStore, DownloadsOnceForAllWhoAskMeanwhileAndKeepsIt) {
    Fakes fakes;
    fakes.publish(newFeed);
    std::vector<std::string> served;
    const auto serve = [&served](const std::vector<TipItem>& tips) { served.push_back(tips.at(0).title); };
    fakes.web.whileLoading = [&] { fakes.store.fetchTips(serve); };
    fakes.store.fetchTips(serve);
    fakes.store.finish();
    EXPECT_THAT(served, ElementsAre("new", "new"));
    EXPECT_EQ(fakes.fetchTips(), "new");
    EXPECT_EQ(fakes.web.requests.size(), 1U);
}

TEST(TipStore, ServesTipsThatItCannotKeep) {
    Fakes fakes;
    fakes.files.write(cachePath, cacheOf("kept", 7 * hour));
    fakes.publish(newFeed);
    fakes.files.limitRoom(10);
    EXPECT_EQ(fakes.fetchTips(), "new");
    EXPECT_THAT(fakes.log.lines,
                ElementsAre(LogLine{LogLevel::error, "TipStore",
                                    "Failed to write tips cache: cannot write /caches/tips_cache.json: No space left "
                                    "on device"}));
    fakes.web.failure = "down";
    EXPECT_EQ(fakes.fetchTips(), "kept");
}

TEST(TipStore, RequestsTheFirstLanguageFromAValidHost) {
    const std::pair<std::vector<std::string>, const char*> rows[]{
        {{"de-AT", "en-US"}, "de"}, {{"deu"}, "de"}, {{"en-DE"}, "en"}, {{"DE"}, "en"}, {{}, "en"},
        {{"fr", "de"}, "en"}};
    for (const auto& [languages, expected] : rows) {
        EXPECT_EQ(TipStore::feedLanguage(languages), expected);
    }
    Fakes german{.languages = {"de-DE"}};
    german.fetchTips();
    EXPECT_TRUE(german.web.requests.at(0).ends_with("&lang=de"));
    Fakes invalid{.host = "no host"};
    invalid.files.write(cachePath, cacheOf("kept", 7 * hour));
    EXPECT_EQ(invalid.fetchTips(), "kept");
    EXPECT_TRUE(invalid.web.requests.empty() && invalid.log.lines.empty());
}

const TipItem tip{.title = "T \"1\"", .description = "d\u00E9\n", .link = "l", .pubDate = {0.1 + 0.2}, .guid = "g"};

TEST(TipsCache, IsOneObjectThatComesBackAsItWas) {
    const CachedTips cache{.timestamp = {794823030.25}, .tips = {tip, {.title = "2", .pubDate = {-1e9 / 3}}, tip}};
    const auto back = decodedCache(encoded(cache));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->timestamp, cache.timestamp);
    EXPECT_EQ(back->tips, cache.tips);
    EXPECT_EQ(
        encoded({.timestamp = {1}, .tips = {tip}}),
        R"({"timestamp":1,"tips":[{"title":"T \"1\"","description":"dé\n","link":"l","pubDate":0.30000000000000004,"guid":"g"}]})");
}

TEST(TipsCache, IsReadStrictly) {
    const std::string good = R"({"title":"t","description":"","link":"l","pubDate":5,"guid":"g"})";
    const auto with = [](const std::string& tips) { return R"({"timestamp":1,"tips":)" + tips + "}"; };
    EXPECT_TRUE(decodedCache(with("[]")));
    EXPECT_TRUE(decodedCache("\n {\"more\":{\"deep\":[null]},\"tips\" : [ " + good + " ], \"timestamp\" : 1.5e8 }\n"));
    const auto expectRefused = [](const auto&... files) {
        for (const std::string& json : {std::string(files)...}) {
            EXPECT_FALSE(decodedCache(json)) << json.substr(0, 120);
        }
    };
    expectRefused("", R"({"tips":[]})", R"({"timestamp":1})", R"({"timestamp":true,"tips":[]})",
                  R"({"timestamp":1e999,"tips":[]})", R"({"timestamp":1,"tips":{}})", R"({"timestamp":1,"tips":[]} x)",
                  with("[]") + '\0', R"({"timestamp":1,"tips":[],})", with("[null]"), std::string(1'000'000, '['));
    const std::pair<const char*, const char*> changes[]{
        {R"("t")", "null"},        {R"("t")", "1"}, {"5", R"("5")"}, {"5", "true"},          {R"("t")", "\"\xff\""},
        {R"("t")", R"("\ud800")"}, {"guid", "id"},  {"link", "url"}, {"description", "text"}};
    for (const auto& [what, by] : changes) {
        std::string bad = good;
        bad.replace(bad.find(what), std::string_view(what).size(), by);
        expectRefused(with("[" + good + "," + bad + "]"));
    }
}

TEST(TipsProvider, ShowsTheNewestTipForSixHoursOrTheTipOfTheDayUntilMidnight) {
    const Date nextDay{now + 60};
    const std::tuple<TipsMode, int, std::optional<Date>, std::optional<std::string>, double> rows[]{
        {TipsMode::latestTip, 7, nextDay, "0", now + 6 * hour},
        {TipsMode::latestTip, 0, nextDay, std::nullopt, now + 6 * hour},
        {TipsMode::tipOfTheDay, 7, nextDay, "6", now + 60},
        {TipsMode::tipOfTheDay, 1, std::nullopt, "0", now + 24 * hour},
        {TipsMode::tipOfTheDay, 0, nextDay, std::nullopt, now + 60},
    };
    for (const auto& [mode, count, midnight, title, reload] : rows) {
        Fakes fakes;
        CachedTips cache{.timestamp = {now}, .tips = {}};
        for (int i = 0; i < count; ++i) {
            cache.tips.push_back({.title = std::to_string(i)});
        }
        fakes.files.write(cachePath, encoded(cache));
        FixedCalendar calendar;
        calendar.day = {2025, 3, 16};
        calendar.next = midnight;
        const TipsProvider provider(fakes.store, fakes.clock, calendar);
        // Placeholders and snapshots show a sample.
        EXPECT_EQ(provider.placeholder().tip->title, "How to Use Smart Rules");
        EXPECT_EQ(provider.placeholder().mode, TipsMode::latestTip);
        const TipsEntry sample = provider.snapshot({.mode = mode});
        EXPECT_EQ(sample.tip->title, "How to Use Smart Rules");
        EXPECT_EQ(sample.mode, mode);
        EXPECT_EQ(fakes.files.readCount(cachePath), 0);

        Timeline<TipsEntry> timeline;
        provider.timeline({.mode = mode}, [&](const auto& fetched) { timeline = fetched; });
        ASSERT_EQ(timeline.entries.size(), 1U);
        const TipsEntry& entry = timeline.entries[0];
        EXPECT_EQ(entry.tip ? std::optional(entry.tip->title) : std::nullopt, title);
        EXPECT_EQ(entry.mode, mode);
        EXPECT_EQ(entry.date, fakes.clock.now());
        EXPECT_EQ(timeline.reload.date.secondsSinceReferenceDate, reload);
    }
}

TEST(TipsProvider, PicksByTheDateOfTheCalendar) {
    // Worked out by hand: h ^= h >> 16; h *= 0x45D9F3B; h ^= h >> 16; h mod count.
    const std::tuple<CalendarDay, std::size_t, std::size_t> rows[]{{{2025, 3, 16}, 1, 0},
                                                                   {{2025, 3, 16}, 7, 6},
                                                                   {{2025, 3, 16}, 1000003, 405108},
                                                                   {{2568, 3, 16}, 50, 39},
                                                                   {{2025, 12, 31}, 1000003, 843140},
                                                                   {{2026, 1, 1}, 2, 1}};
    for (const auto& [day, count, index] : rows) {
        EXPECT_EQ(indexOfTheDay(day, count), index) << day.year << ' ' << count;
    }
}

TEST(TipsEntryView, ShowsMoreOfTheTipTheLargerTheFamily) {
    setenv("LC_ALL", "C", 1);
    setenv("TZ", "UTC", 1);
    const TipsEntry entry{.date = {},
                          .tip =
                              TipItem{.title = "T", .description = "", .pubDate = *fromRfc3339("2025-03-16T12:00:00Z")},
                          .mode = TipsMode::tipOfTheDay};
    const std::string tight =
        R"({"type":"vstack","alignment":"leading","spacing":0,"children":[{"type":"padding","bottom":6,"child":{"type":"hstack","alignment":"firstTextBaseline","children":[{"type":"text","text":"Tips","font":{"style":"headline"}},{"type":"spacer"},{"type":"text","text":"Tip of the Day","font":{"style":"caption"},"foreground":"secondary"}]}},)";
    const std::string end = R"(,{"type":"spacer","minLength":0}]})";
    const std::pair<WidgetFamily, std::string> rows[]{
        {WidgetFamily::small,
         R"({"type":"vstack","alignment":"leading","spacing":4,"children":[{"type":"hstack","children":[{"type":"text","text":"Tips","font":{"style":"headline"}},{"type":"spacer"},{"type":"symbol","symbol":"lightbulb","foreground":"yellow"}]},{"type":"spacer","minLength":2},{"type":"text","text":"T","lineLimit":4,"font":{"style":"callout"},"foreground":"primary"})"},
        {WidgetFamily::medium,
         tight +
             R"({"type":"text","text":"T","lineLimit":2,"font":{"style":"callout","weight":"semibold"}},{"type":"padding","top":2,"child":{"type":"text","text":"","lineLimit":3,"font":{"style":"caption"},"foreground":"secondary"}})"},
        {WidgetFamily::large,
         tight +
             R"({"type":"text","text":"T","lineLimit":3,"font":{"style":"callout","weight":"semibold"}},{"type":"padding","top":2,"child":{"type":"text","text":"Mar 16, 2025","font":{"style":"caption2"},"foreground":"tertiary"}},{"type":"padding","top":6,"bottom":6,"child":{"type":"divider"}},{"type":"text","text":"","font":{"style":"caption"},"foreground":"secondary"})"},
        {WidgetFamily::extraLarge,
         tight +
             R"({"type":"text","text":"T","lineLimit":3,"font":{"style":"title3","weight":"semibold"}},{"type":"padding","top":2,"child":{"type":"text","text":"Mar 16, 2025","font":{"style":"caption"},"foreground":"tertiary"}},{"type":"padding","top":8,"bottom":8,"child":{"type":"divider"}},{"type":"text","text":"","font":{"style":"callout"},"foreground":"secondary"})"},
    };
    for (const auto& [family, expected] : rows) {
        EXPECT_EQ(json(TipsEntryView{entry}.body({.family = family})), expected + end);
        EXPECT_EQ(
            json(TipsEntryView{{}}.body({.family = family})),
            R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":"lightbulb.slash","font":{"style":"largeTitle"},"foreground":"secondary"},{"type":"text","text":"No Tips","font":{"style":"headline"},"foreground":"secondary"},{"type":"text","text":"Tips could not be loaded.","textAlignment":"center","font":{"style":"caption"},"foreground":"tertiary"}]})");
    }
    EXPECT_EQ(TipsEntryView{entry}.body({.family = WidgetFamily::unknown}),
              TipsEntryView{entry}.body({.family = WidgetFamily::medium}));
}

TEST(TipsWidget, DeclaresItsPreviewsAndOpensTheTip) {
    const auto widget = TipsWidget().body();
    EXPECT_EQ(widget->description().displayName, "Tips");
    std::vector<std::string> names;
    for (const auto& preview : widget->previews()) {
        names.push_back(preview.name + ", " + std::string(familyName(preview.family)));
    }
    EXPECT_THAT(names, ElementsAre("Tips Small, small", "Tips Medium, medium", "Tips Large, large",
                                   "Tips Extra Large, extraLarge", "Tips Empty, small"));
    EXPECT_EQ(widget->preview(3).size(), 3U);
    EXPECT_THAT(*widget->preview(0).at(1).widgetURL,
                ::testing::MatchesRegex("x-foliovault://open-url\\?location=https://.*/blog/sample2&widget=tips"));
    EXPECT_EQ(widget->preview(4).at(0).widgetURL, std::nullopt);
}

} // namespace
} // namespace foliovault
