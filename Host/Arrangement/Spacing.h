// Distances between tiles on a desktop, in the units of its windows.
#pragma once

namespace host {

/// Between tiles, and from a tile to the screen's edge.
inline constexpr double tileGap = 24;
/// The step of the grid that dragged tiles are dropped on.
inline constexpr double gridStep = 8;
/// The largest distance at which a dragged tile snaps.
inline constexpr double snapDistance = 12;

} // namespace host
