// Draws tiles into windows: shadow, picture and marks. Lengths are in the window's units.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/Palette.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Layout/Geometry.h"

namespace host {

/// How far a tile's shadow reaches.
inline constexpr double shadowMargin = 20;

/// What is drawn under a tile: a shadow on a transparent window, an opaque ground, or nothing on a GTK window, whose
/// style draws the shadow.
enum class Backdrop { transparent, opaque, window };

/// Draws the picture in `frame`, on its backdrop. A picture with an `alpha` below 1 has no shadow.
void paintTile(cairo_t* cairo, const RenderedTile& rendered, const Rect& frame, Backdrop backdrop, double alpha = 1);

/// The area that is under the pointer or has the focus: a row, which is extended a little, or a tile, with its corners.
struct Mark {
    Rect frame;
    /// Of a tile; 0 for a row.
    double cornerRadius = 0;
};
void fillMark(cairo_t* cairo, const Mark& mark, const Rgba& color);
void strokeMark(cairo_t* cairo, const Mark& mark, const Rgba& color);

/// Returns the pixels of a rectangle with round corners.
RegionHandle roundedRegion(const Rect& rect, double radius);

} // namespace host
