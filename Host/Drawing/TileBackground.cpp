#include "Host/Drawing/TileBackground.h"

#include "Host/Drawing/Shapes.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>

namespace host {

TileBackground::TileBackground(Size size, const PixelGrid& grid)
    : grid_(grid), bounds_(grid.rect({0, 0, size.width, size.height})), radius_(cornerRadius * grid.scale()) {}

void TileBackground::paint(cairo_t* cairo, const Palette& palette, const Rgba& background) const {
    setSource(cairo, background);
    addRoundedRect(cairo, bounds_, radius_);
    cairo_fill(cairo);

    const Palette::Edge edge = palette.tileEdge();
    const double width = grid_.thickness(edge.thickness);
    const double inset = width / 2;
    setSource(cairo, edge.color);
    addRoundedRect(cairo, {inset, inset, bounds_.width - width, bounds_.height - width}, radius_ - inset);
    cairo_set_line_width(cairo, width);
    cairo_stroke(cairo);
}

void TileBackground::clip(cairo_t* cairo) const {
    addRoundedRect(cairo, bounds_, radius_);
    cairo_clip(cairo);
}

bool TileBackground::holds(const Rect& rect) const {
    if (rect.x < 0 || rect.y < 0 || rect.right() > bounds_.width || rect.bottom() > bounds_.height) {
        return false;
    }
    // How far the rectangle extends into a corner, from the centre of its curve.
    const double dx = radius_ - std::min(rect.x, bounds_.width - rect.right());
    const double dy = radius_ - std::min(rect.y, bounds_.height - rect.bottom());
    return dx <= 0 || dy <= 0 || std::hypot(dx, dy) <= radius_;
}

} // namespace host
