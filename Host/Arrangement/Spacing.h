// The distances that tiles keep on a desktop, in the desktop's own units, which are those of windows.
#pragma once

namespace host {

/// Between tiles, and from a tile to the screen's edge.
inline constexpr double tileGap = 24;
/// Dragged tiles move in these steps.
inline constexpr double gridStep = 8;
/// From how far a neighbour's edge or the screen's margin draws a dragged tile to itself.
inline constexpr double snapDistance = 12;

} // namespace host
