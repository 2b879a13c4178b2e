// Answers the host's requests for the Favorites widget.
#pragma once

#include "Extension/Favorites/FavoritesConfiguration.h"
#include "Extension/Favorites/FavoritesItem.h"
#include "Extension/Favorites/FavoritesStore.h"
#include "Extension/Shared/ListProvider.h"

#include <cstdint>
#include <vector>

namespace foliovault {

struct FavoritesEntry {
    platform::Date date;
    /// Those to show, of the chosen group.
    std::vector<FavoritesItem> items;
    /// How many the chosen group has.
    std::int64_t displayCount = 0;

    static FavoritesEntry sample();
    static FavoritesEntry read(const FavoritesStore& store, const FavoritesIntent& intent);
};

using FavoritesProvider = ListProvider<FavoritesEntry, FavoritesIntent, FavoritesStore>;

} // namespace foliovault
