// Where a dragged tile comes to lie.
#pragma once

#include "Host/Layout/Geometry.h"

#include <vector>

namespace host {

/// The tile moved onto the screen, as little as need be; one that is larger than the screen starts at its corner.
Rect pulledBack(const Rect& tile, const Rect& screen);

/// The tile where it lies when it is let go: edge to edge with a neighbour, or with the usual gap beside one, or at the
/// screen's margin, where it is near to that; else on the grid. On the screen in any case.
Rect snapped(const Rect& tile, const std::vector<Rect>& neighbours, const Rect& screen);

} // namespace host
