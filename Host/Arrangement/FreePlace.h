// Where a new tile goes that nobody has placed.
#pragma once

#include "Host/Layout/Geometry.h"

#include <vector>

namespace host {

/// The upper left corner of the first place on the screen, row by row from its upper left corner, where a tile of
/// `size` keeps its distance from all that is taken. On a full screen tiles lie on each other, each a little aside.
Point freePlace(Size size, const std::vector<Rect>& taken, const Rect& screen);

} // namespace host
