// Computes where a dragged tile is dropped.
#pragma once

#include "Host/Layout/Geometry.h"

#include <vector>

namespace host {

/// Returns the tile moved onto the screen by the shortest way. A tile larger than the screen starts at its corner.
Rect clampedTo(const Rect& tile, const Rect& screen);

/// Returns the tile aligned with a neighbour's edge, at the usual gap beside it, or at the screen's margin, if one is
/// within 12 units; else on a grid of 8 units. Always on the screen.
Rect snapped(const Rect& tile, const std::vector<Rect>& neighbours, const Rect& screen);

} // namespace host
