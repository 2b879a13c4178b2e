// Where a new tile without a position goes.
#pragma once

#include "Host/Layout/Geometry.h"

#include <vector>

namespace host {

/// Returns the upper left corner of the first place on the screen, row by row, where a tile of `size` keeps its
/// distance from all that is taken. On a full screen tiles overlap, each a little aside.
Point freePlace(Size size, const std::vector<Rect>& taken, const Rect& screen);

} // namespace host
