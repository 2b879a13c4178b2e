// The Favorites widget: its entries, views and declaration.
#pragma once

#include "Extension/Favorites/FavoritesConfiguration.h"
#include "Extension/Favorites/FavoritesItem.h"
#include "Extension/Favorites/FavoritesStore.h"
#include "Extension/Shared/ListWidget.h"

#include <memory>

namespace foliovault {

using FavoritesEntry = ListEntry<FavoritesItem>;
using FavoritesProvider = ListProvider<FavoritesEntry, FavoritesIntent, FavoritesStore>;

/// The list, or the empty view if the entry has no items.
struct FavoritesEntryView {
    const FavoritesEntry& entry;
    platform::View body(const platform::Environment& environment) const;
};

struct FavoritesEmptyView {
    platform::View body() const;
};

struct FavoritesWidget {
    FavoritesProvider provider;
    std::unique_ptr<platform::Widget> body() const;
};

} // namespace foliovault
