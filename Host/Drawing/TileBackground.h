// What a widget stands on: a rectangle with round corners, filled, with a line along its inner edge.
//
// The line is as wide as the palette says, and at least a pixel.
#pragma once

#include "Host/Drawing/Palette.h"
#include "Host/Drawing/PixelGrid.h"

#include <cairo.h>

namespace host {

class TileBackground {
  public:
    /// A tile for a widget of `size` points, its upper left corner at the origin of a cairo whose units are pixels of
    /// `grid`.
    TileBackground(Size size, const PixelGrid& grid);

    /// Draws over what is there, filled with `background`. A tile that is less high than its corners becomes a capsule.
    void paint(cairo_t* cairo, const Palette& palette, const Rgba& background) const;

    /// Clips to the tile.
    void clip(cairo_t* cairo) const;

    /// Whether a rectangle, in pixels, lies in the tile, none of it outside a round corner.
    bool holds(const Rect& rect) const;

  private:
    PixelGrid grid_;
    Rect bounds_;
    double radius_;
};

} // namespace host
