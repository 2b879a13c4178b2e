// Which screen each placed widget is on, and where there.
//
// A tile lies where the arrangement says as long as its screen is connected, else in a free place on the first screen.
// A place off the screen is moved onto it, or to a free place if another tile lies there. Pure.
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
        fallback,
    };
    Source source = Source::arrangement;
};

/// Returns the places of all tiles in their order; empty without screens.
std::vector<PlacedTile> placeTiles(const std::vector<TileToPlace>& tiles, const std::vector<Screen>& screens);

/// Returns the screen at the point, or else the nearest one. Requires at least one screen.
std::size_t screenAt(Point point, const std::vector<Screen>& screens);

} // namespace host
