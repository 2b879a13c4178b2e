// Where a dragged tile is dropped.
#pragma once

#include "Host/Layout/Geometry.h"

#include <vector>

namespace host {

/// Returns the tile moved onto the screen by the shortest way; one larger than the screen starts at its corner.
Rect clampedTo(const Rect& tile, const Rect& screen);

/// Returns the tile where it is dropped: aligned with a neighbour's edge, or with the usual gap beside it, or at the
/// screen's margin if it is within `snapDistance` of that; else on the grid. Always on the screen.
Rect snapped(const Rect& tile, const std::vector<Rect>& neighbours, const Rect& screen);

} // namespace host
