// Answers the host's requests for the Favorites widget.
#pragma once

#include "Extension/Favorites/FavoritesConfiguration.h"
#include "Extension/Favorites/FavoritesItem.h"
#include "Extension/Favorites/FavoritesStore.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Widgets/Timeline.h"

#include <cstdint>
#include <vector>

namespace foliovault {

struct FavoritesEntry {
    platform::Date date;
    /// At most `listEntryItemCap`.
    std::vector<FavoritesItem> items;
    /// How many there are in all.
    std::int64_t displayCount = 0;
};

/// Reads the file afresh for every snapshot and timeline, and asks to be asked again after five minutes.
class FavoritesProvider {
  public:
    using Entry = FavoritesEntry;
    using Intent = FavoritesIntent;

    explicit FavoritesProvider(const FavoritesStore& store = FavoritesStore::shared(),
                               const platform::Clock& clock = platform::SystemClock::shared())
        : store_(&store), clock_(&clock) {}

    /// Sample items; no file is read.
    FavoritesEntry placeholder() const;
    FavoritesEntry snapshot(const FavoritesIntent& intent) const { return makeEntry(intent); }
    platform::Timeline<FavoritesEntry> timeline(const FavoritesIntent& intent) const;

  private:
    FavoritesEntry makeEntry(const FavoritesIntent& intent) const;

    const FavoritesStore* store_;
    const platform::Clock* clock_;
};

} // namespace foliovault
