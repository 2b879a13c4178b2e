// Makes the Tips widget's timelines.
#pragma once

#include "Extension/Tips/TipItem.h"
#include "Extension/Tips/TipStore.h"
#include "Extension/Tips/TipsConfiguration.h"
#include "Platform/Foundation/Calendar.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Widgets/Timeline.h"

#include <functional>
#include <optional>
#include <vector>

namespace foliovault {

struct TipsEntry {
    platform::Date date;
    /// Nothing without tips.
    std::optional<TipItem> tip;
    TipsMode mode = TipsMode::latestTip;
};

/// Timelines show tips of the store, placeholders and snapshots a sample. The newest tip is reloaded after six hours,
/// the tip of the day at the next local midnight.
class TipsProvider {
  public:
    using Entry = TipsEntry;
    using Intent = TipsIntent;

    explicit TipsProvider(TipStore& store = TipStore::shared(),
                          const platform::Clock& clock = platform::SystemClock::shared(),
                          const platform::Calendar& calendar = platform::UserCalendar::shared())
        : store_(&store), clock_(&clock), calendar_(&calendar) {}

    TipsEntry placeholder() const { return snapshot({}); }
    TipsEntry snapshot(const TipsIntent& intent) const;
    void timeline(const TipsIntent& intent, std::function<void(const platform::Timeline<TipsEntry>&)> finish) const;

  private:
    platform::Timeline<TipsEntry> timelineOf(const std::vector<TipItem>& tips, TipsMode mode) const;
    std::optional<TipItem> tipOfTheDay(const std::vector<TipItem>& tips) const;

    TipStore* store_;
    const platform::Clock* clock_;
    const platform::Calendar* calendar_;
};

/// Returns the index of the tip of `day` among `count` tips, the same for every user of that calendar. Requires a
/// positive count.
std::size_t indexOfTheDay(const platform::CalendarDay& day, std::size_t count);

} // namespace foliovault
