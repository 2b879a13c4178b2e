// A widget's background: a filled rectangle with round corners, with a line along its inner edge. The palette has the
// line's width, which is at least a pixel.
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

    /// Draws the background, filled with `background`. A tile that is lower than its corners becomes a capsule.
    void paint(cairo_t* cairo, const Palette& palette, const Rgba& background) const;

    /// Clips to the tile.
    void clip(cairo_t* cairo) const;

    /// Returns whether a rectangle, in pixels, lies wholly in the tile, inside its round corners.
    bool holds(const Rect& rect) const;

  private:
    PixelGrid grid_;
    Rect bounds_;
    double radius_;
};

} // namespace host
