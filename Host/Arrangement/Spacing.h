// Distances between tiles on a desktop, in the units of its windows.
#pragma once

namespace host {

/// Between tiles, and from a tile to the screen's edge.
inline constexpr double tileGap = 24;
/// Dragged tiles move in these steps.
inline constexpr double gridStep = 8;
/// A dragged tile within this distance of a neighbour's edge or the screen's margin snaps to it.
inline constexpr double snapDistance = 12;

} // namespace host
