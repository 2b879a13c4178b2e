#include "Extension/Tips/TipsProvider.h"

#include "Extension/Tips/TipsCache.h"
#include "Tests/Support/FixedClock.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/MemoryWebClient.h"
#include "Tests/Support/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::CalendarDay;
using platform::Date;
using platform::fromRfc3339;

/// A day that does not depend on the time.
class FixedCalendar final : public platform::Calendar {
  public:
    explicit FixedCalendar(CalendarDay day, std::optional<Date> next = std::nullopt) : day_(day), next_(next) {}
    CalendarDay dayOf(Date /*date*/) const override { return day_; }
    std::optional<Date> startOfNextDay(Date /*date*/) const override { return next_; }

  private:
    CalendarDay day_;
    std::optional<Date> next_;
};

/// A provider on `count` fresh tips, called "0" and so on.
struct Fakes {
    platform::MemoryFileSystem files;
    platform::MemoryWebClient web;
    platform::FixedClock clock;
    platform::RecordingLog log;
    TipStore store{{.files = files,
                    .web = web,
                    .clock = clock,
                    .log = log,
                    .cachesFolder = "/caches",
                    .languages = {},
                    .feedHost = "support.example"}};
    FixedCalendar calendar;
    TipsProvider provider{store, clock, calendar};

    Fakes(const char* now, int count, CalendarDay day = {}, std::optional<Date> next = std::nullopt)
        : clock(*fromRfc3339(now)), calendar(day, next) {
        CachedTips cache{.timestamp = clock.now(), .tips = {}};
        for (int i = 0; i < count; ++i) {
            cache.tips.push_back({.title = std::to_string(i)});
        }
        files.write("/caches/tips_cache.json", encoded(cache));
    }

    platform::Timeline<TipsEntry> timeline(const TipsIntent& intent) const {
        platform::Timeline<TipsEntry> fetched;
        provider.timeline(intent, [&](const auto& timeline) { fetched = timeline; });
        return fetched;
    }
};

TEST(TipsProvider, ShowsTheNewestTipForSixHoursOrTheTipOfTheDayUntilMidnight) {
    struct Row {
        TipsMode mode;
        int count;
        std::optional<Date> midnight;
        std::optional<std::string> title;
        const char* reload;
    };
    const Date midnight = *fromRfc3339("2025-03-17T00:00:00Z");
    const Row rows[]{
        {TipsMode::latestTip, 7, midnight, "0", "2025-03-17T05:59:00.000Z"},
        {TipsMode::latestTip, 0, midnight, std::nullopt, "2025-03-17T05:59:00.000Z"},
        {TipsMode::tipOfTheDay, 7, midnight, "6", "2025-03-17T00:00:00.000Z"},
        {TipsMode::tipOfTheDay, 1, std::nullopt, "0", "2025-03-17T23:59:00.000Z"},
        {TipsMode::tipOfTheDay, 0, midnight, std::nullopt, "2025-03-17T00:00:00.000Z"},
    };
    for (const Row& row : rows) {
        const Fakes fakes("2025-03-16T23:59:00Z", row.count, {2025, 3, 16}, row.midnight);
        const auto timeline = fakes.timeline({.mode = row.mode});
        ASSERT_EQ(timeline.entries.size(), 1U);
        const TipsEntry& entry = timeline.entries[0];
        EXPECT_EQ(entry.tip ? std::optional(entry.tip->title) : std::nullopt, row.title);
        EXPECT_EQ(entry.mode, row.mode);
        EXPECT_EQ(entry.date, fakes.clock.now());
        EXPECT_EQ(toRfc3339(timeline.reload.date), row.reload);
    }
}

TEST(TipsProvider, PicksByTheDateAsTheCalendarWritesIt) {
    // Worked out by hand: h ^= h >> 16; h *= 0x45D9F3B; h ^= h >> 16; h mod count.
    const std::tuple<CalendarDay, std::size_t, std::size_t> rows[]{
        {{2025, 3, 16}, 1, 0},  {{2025, 3, 16}, 7, 6},   {{2025, 3, 16}, 50, 44}, {{2025, 3, 16}, 1000003, 405108},
        {{2568, 3, 16}, 7, 4},  {{2568, 3, 16}, 50, 39}, {{2025, 12, 31}, 7, 2},  {{2025, 12, 31}, 1000003, 843140},
        {{2026, 1, 1}, 50, 33}, {{2026, 1, 1}, 2, 1},
    };
    for (const auto& [day, count, index] : rows) {
        EXPECT_EQ(indexOfTheDay(day, count), index) << day.year << ' ' << count;
    }
}

TEST(TipsProvider, ShowsASampleInGalleryAndPlaceholderAndAsksNobody) {
    const Fakes fakes("2025-03-16T10:00:00Z", 7);
    EXPECT_EQ(fakes.provider.placeholder().tip->title, "How to Use Smart Rules");
    EXPECT_EQ(fakes.provider.placeholder().mode, TipsMode::latestTip);
    const auto entry = fakes.provider.snapshot({.mode = TipsMode::tipOfTheDay});
    EXPECT_EQ(entry.tip->title, "How to Use Smart Rules");
    EXPECT_EQ(entry.mode, TipsMode::tipOfTheDay);
    EXPECT_EQ(entry.date, fakes.clock.now());
    EXPECT_EQ(fakes.files.readCount("/caches/tips_cache.json"), 0);
    EXPECT_TRUE(fakes.web.requests().empty());
}

TEST(TipsIntent, TakesTheModesByTheirRawValues) {
    const auto parameter = TipsIntent::description().parameters.at(0);
    EXPECT_EQ(parameter.description.name, "mode");
    EXPECT_THAT(parameter.description.cases, ::testing::ElementsAre(platform::Choice{"latestTip", "Latest Tip"},
                                                                    platform::Choice{"tipOfTheDay", "Tip of the Day"}));
    EXPECT_EQ(parameter.description.defaultChoice, parameter.description.cases.at(0));
    EXPECT_EQ(subtitle(TipsMode::tipOfTheDay), "Tip of the Day");
    EXPECT_EQ(subtitle(TipsMode::latestTip), "Latest");
}

} // namespace
} // namespace foliovault
