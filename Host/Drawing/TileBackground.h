// What a widget stands on: a rectangle with round corners, filled, with a line along its inner edge.
//
// The line is as wide as the palette says; where that is less than a pixel it is a pixel wide, and as much fainter.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/LruCache.h"
#include "Host/Drawing/Palette.h"
#include "Host/Drawing/PixelGrid.h"

#include <cstddef>

namespace host {

/// Pictures of a tile that is nothing but its corners, made once for each scale and the colours they are in. One
/// thread at a time.
class TileCorners {
  public:
    TileCorners() : pictures_(8) {}

    /// Good until the next call.
    cairo_surface_t* picture(const PixelGrid& grid, const Palette& palette);

  private:
    /// All that a picture depends on.
    struct Key {
        double scale;
        Rgba tile;
        double edgeWidth;
        Rgba edge;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Hash {
        // Few are kept, and none of one scale have tiles of one colour.
        std::size_t operator()(const Key& key) const {
            return std::hash<double>()(key.scale) * 31 + std::hash<double>()(key.tile.red);
        }
    };
    LruCache<Key, SurfaceHandle, Key, Hash> pictures_;
};

class TileBackground {
  public:
    /// A tile for a widget of `size` points, its upper left corner at the origin of a cairo whose units are pixels of
    /// `grid`.
    TileBackground(Size size, const PixelGrid& grid);

    /// In a few shapes, for pictures of any size: over whatever was there, with a background of that colour. What is
    /// less high than its corners are becomes a capsule.
    void paintOutlined(cairo_t* cairo, const Palette& palette, const Rgba& background) const;

    /// A tile with its own background from rectangles and pictures of the corners, in place of whatever was there:
    /// outside the round corners it is clear afterwards.
    void paintPixels(cairo_t* cairo, const Palette& palette, TileCorners& corners) const;

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
