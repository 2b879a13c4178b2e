// What is drawn around, under and over a tile's picture. Lengths are the window's units.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Host/Drawing/Handles.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Layout/Geometry.h"

namespace host {

/// How far a tile's shadow reaches.
inline constexpr double shadowMargin = 16;

/// What lies under a tile: what the screen shows there, or nothing that could be seen through it.
enum class Backdrop { transparent, opaque };

/// The picture in `frame`, on its shadow or on an opaque ground; `alpha` below 1 for one that is not quite there.
void paintTile(cairo_t* cairo, const RenderedTile& rendered, const Rect& frame, Backdrop backdrop, double alpha = 1);

/// What the pointer is on.
void paintHover(cairo_t* cairo, const Rect& frame, ColorScheme scheme);
/// What has the keyboard.
void paintFocus(cairo_t* cairo, const Rect& frame, const Rgba& accent);

using RegionHandle = std::unique_ptr<cairo_region_t, Releaser<cairo_region_destroy>>;
/// The pixels of a rectangle with round corners.
RegionHandle roundedRegion(const Rect& rect, double radius);

} // namespace host
