// Finds a place for a tile without a position.
#pragma once

#include "Host/Layout/Geometry.h"

#include <vector>

namespace host {

/// Between tiles, and from a tile to the screen's edge, in the units of the desktop's windows.
inline constexpr double tileGap = 24;

/// Returns the upper left corner of the first place, row by row from the top right, where a tile of `size` keeps its
/// distance from all taken places. The desktop's icons start at the left. On a full screen tiles overlap, each shifted a
/// little.
Point freePlace(Size size, const std::vector<Rect>& taken, const Rect& screen);

/// Packs tiles of these sizes, at most six, on an area of this width and any height, in the order that needs the
/// smallest height. Of several such orders it uses the first one, by permutations of the given order. Returns their
/// frames in the order of `sizes`, each at its distance from the area's edges and the other tiles. A tile that is too
/// wide is placed below those before it.
std::vector<Rect> packTiles(const std::vector<Size>& sizes, double width);

} // namespace host
