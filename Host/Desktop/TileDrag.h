// A tile that is being dragged.
//
// The tile's own window stays in its place, dimmed, because the pointer's coordinates are relative to it. Another
// window shows where the tile would be dropped.
#pragma once

#include "Host/Desktop/DesktopWindow.h"
#include "Host/Desktop/Outputs.h"
#include "Host/Drawing/RenderedTile.h"

#include <cstddef>
#include <map>
#include <vector>

namespace host {

class TileDrag {
  public:
    /// `start` is the tile's frame, `others` has those of the other tiles by the index of their outputs. Requires that
    /// `rendered` outlives this.
    TileDrag(const RenderedTile& rendered, const Rect& start, Outputs& outputs,
             std::multimap<std::size_t, Rect> others);
    TileDrag(const TileDrag&) = delete;
    TileDrag& operator=(const TileDrag&) = delete;

    /// Moves the tile. `distance` is the pointer's, from the drag's start.
    void move(Point distance);

    struct Place {
        std::size_t output = 0;
        Rect frame;
    };
    const Place& place() const { return place_; }

  private:
    void draw(cairo_t* cairo) const;

    const RenderedTile& rendered_;
    Rect start_;
    const Outputs& outputs_;
    std::multimap<std::size_t, Rect> others_;
    Place place_;
    DesktopWindow window_;
};

} // namespace host
