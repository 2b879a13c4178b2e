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

TEST(TipsProvider, ShowsTheNewestTipForSixHours) {
    const Fakes fakes("2025-03-16T10:00:00Z", 7);
    const auto timeline = fakes.timeline({});
    ASSERT_EQ(timeline.entries.size(), 1U);
    EXPECT_EQ(timeline.entries[0].tip->title, "0");
    EXPECT_EQ(timeline.entries[0].mode, TipsMode::latestTip);
    EXPECT_EQ(timeline.entries[0].date, fakes.clock.now());
    EXPECT_EQ(toRfc3339(timeline.reload.date), "2025-03-16T16:00:00.000Z");
}

TEST(TipsProvider, ShowsTheTipOfTheDayUntilMidnight) {
    const Date midnight = *fromRfc3339("2025-03-17T00:00:00Z");
    const Fakes fakes("2025-03-16T23:59:00Z", 7, {2025, 3, 16}, midnight);
    const auto timeline = fakes.timeline({.mode = TipsMode::tipOfTheDay});
    EXPECT_EQ(timeline.entries.at(0).tip->title, "6");
    EXPECT_EQ(timeline.entries[0].mode, TipsMode::tipOfTheDay);
    EXPECT_EQ(timeline.reload.date, midnight);
    const Fakes endless("2025-03-16T23:59:00Z", 1, {2025, 3, 16});
    EXPECT_EQ(toRfc3339(endless.timeline({.mode = TipsMode::tipOfTheDay}).reload.date), "2025-03-17T23:59:00.000Z");
}

TEST(TipsProvider, PicksByTheDateAsTheCalendarWritesIt) {
    struct Row {
        CalendarDay day;
        std::size_t count;
        std::size_t index;
    };
    // Worked out by hand: h ^= h >> 16; h *= 0x45D9F3B; h ^= h >> 16; h mod count.
    const Row rows[]{
        {{2025, 3, 16}, 1, 0},  {{2025, 3, 16}, 7, 6},   {{2025, 3, 16}, 50, 44}, {{2025, 3, 16}, 1000003, 405108},
        {{2568, 3, 16}, 7, 4},  {{2568, 3, 16}, 50, 39}, {{2025, 12, 31}, 7, 2},  {{2025, 12, 31}, 1000003, 843140},
        {{2026, 1, 1}, 50, 33}, {{2026, 1, 1}, 2, 1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(indexOfTheDay(row.day, row.count), row.index) << row.day.year << ' ' << row.count;
    }
}

TEST(TipsProvider, HasAnEntryWithoutTipInEitherMode) {
    const Fakes fakes("2025-03-16T10:00:00Z", 0, {2025, 3, 16}, Date{7});
    for (const TipsMode mode : allCases(TipsMode{})) {
        const auto timeline = fakes.timeline({.mode = mode});
        ASSERT_EQ(timeline.entries.size(), 1U);
        EXPECT_FALSE(timeline.entries[0].tip);
        EXPECT_EQ(timeline.entries[0].mode, mode);
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
