// The Favorites widget's pictures.
#pragma once

#include "Extension/Favorites/FavoritesProvider.h"
#include "Platform/Views/View.h"
#include "Platform/Widgets/Environment.h"

namespace foliovault {

/// The list, or the empty view where there is nothing to list.
struct FavoritesEntryView {
    const FavoritesEntry& entry;
    platform::View body(const platform::Environment& environment) const;
};

struct FavoritesEmptyView {
    platform::View body() const;
};

} // namespace foliovault
