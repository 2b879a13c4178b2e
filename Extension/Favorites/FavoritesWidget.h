// The Favorites widget, as it is declared to the host.
#pragma once

#include "Extension/Favorites/FavoritesProvider.h"
#include "Platform/Widgets/Widget.h"

#include <memory>

namespace foliovault {

struct FavoritesWidget {
    static constexpr const char* kind = "FavoritesWidget";

    FavoritesProvider provider;

    std::unique_ptr<platform::Widget> body() const;
};

} // namespace foliovault
