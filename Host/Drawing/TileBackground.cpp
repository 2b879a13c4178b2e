#include "Host/Drawing/TileBackground.h"

#include "Host/Drawing/Shapes.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

struct Edge {
    double width;
    Rgba color;
};

Edge edgeOf(const PixelGrid& grid, const Palette& palette) {
    const Palette::Edge asked = palette.tileEdge();
    Edge edge{grid.thickness(asked.thickness), asked.color};
    edge.color.alpha *= std::min(1.0, asked.thickness * grid.scale() / edge.width);
    return edge;
}

} // namespace

TileBackground::TileBackground(Size size, const PixelGrid& grid)
    : grid_(grid), bounds_(grid.rect({0, 0, size.width, size.height})), radius_(cornerRadius * grid.scale()) {}

void TileBackground::paint(cairo_t* cairo, const Palette& palette, const Rgba& background) const {
    setSource(cairo, background);
    addRoundedRect(cairo, bounds_, radius_);
    cairo_fill(cairo);

    const Edge edge = edgeOf(grid_, palette);
    setSource(cairo, edge.color);
    const double inset = edge.width / 2;
    addRoundedRect(cairo, {inset, inset, bounds_.width - edge.width, bounds_.height - edge.width}, radius_ - inset);
    cairo_set_line_width(cairo, edge.width);
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
    // How far the rectangle reaches into a corner, seen from the corner's centre.
    const double dx = radius_ - std::min(rect.x, bounds_.width - rect.right());
    const double dy = radius_ - std::min(rect.y, bounds_.height - rect.bottom());
    return dx <= 0 || dy <= 0 || std::hypot(dx, dy) <= radius_;
}

} // namespace host
