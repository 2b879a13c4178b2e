#include "Host/Drawing/TileBackground.h"

#include "Host/Drawing/Shapes.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

/// The whole pixels, or units, that hold a corner.
double cornerLength(const PixelGrid& grid) {
    return std::ceil(cornerRadius * grid.scale());
}

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

void TileBackground::paintOutlined(cairo_t* cairo, const Palette& palette, const Rgba& background) const {
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

void TileBackground::paintPixels(cairo_t* cairo, const Palette& palette, TileCorners& corners) const {
    const double corner = cornerLength(grid_);
    const double width = bounds_.width - 2 * corner;
    const double height = bounds_.height - 2 * corner;
    cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
    if (width < 0 || height < 0) {
        cairo_set_source_rgba(cairo, 0, 0, 0, 0);
        cairo_rectangle(cairo, 0, 0, bounds_.width, bounds_.height);
        cairo_fill(cairo);
        cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
        paintOutlined(cairo, palette, palette.tile());
        return;
    }
    setSource(cairo, palette.tile());
    cairo_rectangle(cairo, 0, corner, bounds_.width, height);
    cairo_rectangle(cairo, corner, 0, width, corner);
    cairo_rectangle(cairo, corner, bounds_.height - corner, width, corner);
    cairo_fill(cairo);

    cairo_surface_t* picture = corners.picture(grid_, palette);
    for (const double x : {0.0, bounds_.width - corner}) {
        for (const double y : {0.0, bounds_.height - corner}) {
            // The picture's corners lie side by side.
            cairo_set_source_surface(cairo, picture, x == 0 ? 0 : x - corner, y == 0 ? 0 : y - corner);
            cairo_rectangle(cairo, x, y, corner, corner);
            cairo_fill(cairo);
        }
    }
    cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);

    const Edge edge = edgeOf(grid_, palette);
    setSource(cairo, edge.color);
    cairo_rectangle(cairo, corner, 0, width, edge.width);
    cairo_rectangle(cairo, corner, bounds_.height - edge.width, width, edge.width);
    cairo_rectangle(cairo, 0, corner, edge.width, height);
    cairo_rectangle(cairo, bounds_.width - edge.width, corner, edge.width, height);
    cairo_fill(cairo);
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

cairo_surface_t* TileCorners::picture(const PixelGrid& grid, const Palette& palette) {
    const Edge edge = edgeOf(grid, palette);
    const Key key{grid.scale(), palette.tile(), edge.width, edge.color};
    if (const SurfaceHandle* known = pictures_.find(key)) {
        return known->get();
    }
    const double side = 2 * cornerLength(grid);
    SurfaceHandle picture(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(side), static_cast<int>(side)));
    const CairoHandle cairo(cairo_create(picture.get()));
    TileBackground({side / grid.scale(), side / grid.scale()}, grid)
        .paintOutlined(cairo.get(), palette, palette.tile());
    return pictures_.insert(key, std::move(picture)).get();
}

} // namespace host
