// Computes on which screen each placed widget is, and where.
//
// A tile lies where the arrangement says while its screen is connected, else in a free place on the first screen. A
// place off the screen is clamped to it, or replaced by a free one if another tile lies there. Pure.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Layout/Geometry.h"

#include <string>
#include <vector>

namespace host {

struct Screen {
    /// Name of the connector, "DP-1".
    std::string name;
    /// In the coordinates of the whole desktop.
    Rect bounds;
    /// Where tiles may lie: the bounds without panels, as far as the desktop reports them.
    Rect area;
    bool operator==(const Screen&) const = default;
};

struct TileToPlace {
    const Instance* instance = nullptr;
    Size size;
};

struct PlacedTile {
    InstanceId id = 0;
    /// Index into the screens.
    std::size_t screen = 0;
    /// In the coordinates of the whole desktop.
    Rect frame;
    enum class Source {
        arrangement,
        /// A free place, to be kept.
        chosen,
        /// A free place until its screen is back.
        fallback,
    };
    Source source = Source::arrangement;
};

/// Returns the places of all tiles in their order; empty without screens.
std::vector<PlacedTile> placeTiles(const std::vector<TileToPlace>& tiles, const std::vector<Screen>& screens);

/// Returns the screen at the point, or else the nearest one. Requires at least one screen.
std::size_t screenAt(Point point, const std::vector<Screen>& screens);

} // namespace host
