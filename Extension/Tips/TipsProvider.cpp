#include "Extension/Tips/TipsProvider.h"

#include <cstdint>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

constexpr double secondsPerDay = 86'400;

/// Spreads the bits of a date's number, so that tips do not appear in their order.
std::uint64_t mixed(std::uint64_t h) {
    constexpr std::uint64_t multiplier = 0x45D9F3B;
    h ^= h >> 16U;
    h *= multiplier;
    h ^= h >> 16U;
    return h;
}

} // namespace

TipsEntry TipsProvider::snapshot(const TipsIntent& intent) const {
    return {.date = clock_->now(), .tip = TipItem::sampleItems().front(), .mode = intent.mode};
}

void TipsProvider::timeline(const TipsIntent& intent, std::function<void(const Timeline<TipsEntry>&)> finish) const {
    store_->fetchTips([this, mode = intent.mode, finish = std::move(finish)](const std::vector<TipItem>& tips) {
        finish(timelineOf(tips, mode));
    });
}

Timeline<TipsEntry> TipsProvider::timelineOf(const std::vector<TipItem>& tips, TipsMode mode) const {
    TipsEntry entry{.date = {}, .tip = std::nullopt, .mode = mode};
    if (mode == TipsMode::tipOfTheDay) {
        entry.tip = tipOfTheDay(tips);
    } else if (!tips.empty()) {
        entry.tip = tips.front();
    }
    entry.date = clock_->now();
    const Date reload = mode == TipsMode::tipOfTheDay
                            ? calendar_->startOfNextDay(entry.date).value_or(entry.date.addingSeconds(secondsPerDay))
                            : entry.date.addingSeconds(TipStore::cacheLifetime);
    Timeline<TipsEntry> timeline;
    timeline.entries.push_back(std::move(entry));
    timeline.reload = {reload};
    return timeline;
}

std::optional<TipItem> TipsProvider::tipOfTheDay(const std::vector<TipItem>& tips) const {
    if (tips.empty()) {
        return std::nullopt;
    }
    return tips[indexOfTheDay(calendar_->dayOf(clock_->now()), tips.size())];
}

std::size_t indexOfTheDay(const CalendarDay& day, std::size_t count) {
    const std::int64_t seed = day.year * 10'000 + day.month * 100 + day.day;
    return mixed(static_cast<std::uint64_t>(seed)) % count;
}

} // namespace foliovault
