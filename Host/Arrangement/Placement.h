// Which screen each placed widget is on, and where there.
//
// What the arrangement says holds as long as the screen is there. A tile whose screen is unplugged goes to a free place
// on the first one, and is back where it was when its screen is. A place that no screen has is pulled back, to a free
// place where another tile lies there. Pure.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Layout/Geometry.h"

#include <string>
#include <vector>

namespace host {

struct Screen {
    /// Its name at the graphics card, "DP-1".
    std::string name;
    /// On the desktop of all screens.
    Rect bounds;
    /// The part of it where tiles may lie: without what panels take, as far as the desktop says so.
    Rect area;
    bool operator==(const Screen&) const = default;
};

struct TileToPlace {
    const Instance* instance = nullptr;
    Size size;
};

struct PlacedTile {
    InstanceId id = 0;
    /// As an index into the screens.
    std::size_t screen = 0;
    /// On the desktop of all screens.
    Rect frame;
    enum class Source {
        arrangement,
        /// A free place, which the tile may keep.
        chosen,
        /// A free place for as long as its screen is away.
        refuge,
    };
    Source source = Source::arrangement;
};

/// The places of all tiles in their order; none where there is no screen.
std::vector<PlacedTile> placeTiles(const std::vector<TileToPlace>& tiles, const std::vector<Screen>& screens);

/// The screen that the point lies on, or else the nearest one; there is at least one.
std::size_t screenAt(Point point, const std::vector<Screen>& screens);

} // namespace host
