// What is drawn around, under and over a tile's picture. Lengths are the window's units.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/Palette.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Layout/Geometry.h"

namespace host {

/// How far a tile's shadow reaches.
inline constexpr double shadowMargin = 20;

/// What lies under a tile: what the screen shows there, nothing that could be seen through it, or a window of the
/// toolkit, which has drawn the tile's shadow.
enum class Backdrop { transparent, opaque, window };

/// The picture in `frame`, on its shadow or on an opaque ground; `alpha` below 1 for one that is not quite there.
void paintTile(cairo_t* cairo, const RenderedTile& rendered, const Rect& frame, Backdrop backdrop, double alpha = 1);

/// What the pointer or the keyboard is on: a row, which gets a little more room, or a tile, with its corners.
struct Mark {
    Rect frame;
    /// Of a tile; 0 for a row.
    double cornerRadius = 0;
};
void fillMark(cairo_t* cairo, const Mark& mark, const Rgba& color);
void strokeMark(cairo_t* cairo, const Mark& mark, const Rgba& color);

/// The pixels of a rectangle with round corners.
RegionHandle roundedRegion(const Rect& rect, double radius);

} // namespace host
