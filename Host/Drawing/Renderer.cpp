#include "Host/Drawing/Renderer.h"

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/Painter.h"
#include "Host/Drawing/VectorFiles.h"

#include <algorithm>
#include <cstdint>

namespace host {
namespace {

/// Vector pictures are laid on half points, so that they are crisp on screens as they are today.
constexpr double vectorScale = 2;

Medium mediumOf(cairo_t* cairo) {
    switch (cairo_surface_get_type(cairo_get_group_target(cairo))) {
    case CAIRO_SURFACE_TYPE_PDF:
    case CAIRO_SURFACE_TYPE_PS:
    case CAIRO_SURFACE_TYPE_SVG:
    case CAIRO_SURFACE_TYPE_RECORDING:
        return Medium::outlines;
    default:
        return Medium::pixels;
    }
}

} // namespace

struct Renderer::Parts {
    PaintBox box;
    PngEncoder encoder;
    Room<std::uint32_t> room;
};

Renderer::Renderer() : parts_(std::make_unique<Parts>()) {}
Renderer::~Renderer() = default;

TextMeasurer& Renderer::texts() {
    return parts_->box.typesetter;
}
ImageMeasurer& Renderer::images() {
    return parts_->box.icons;
}

void Renderer::draw(cairo_t* cairo, const WidgetLayout& layout, const Appearance& appearance, double scale) {
    cairo_save(cairo);
    cairo_scale(cairo, 1 / scale, 1 / scale);
    Painter(cairo, PixelGrid(scale), appearance, mediumOf(cairo), parts_->box).paint(layout);
    cairo_restore(cairo);
}

PixelView Renderer::pixels(const WidgetLayout& layout, const Appearance& appearance, double scale,
                           Room<std::uint32_t>& room) {
    const PixelGrid grid(scale);
    const double width = grid.edge(layout.size.width);
    const double height = grid.edge(layout.size.height);
    if (!(width >= 1 && height >= 1 && width <= greatestSide && height <= greatestSide)) {
        return {};
    }
    // It need not be clear: the tile takes the place of all that is there.
    std::uint32_t* const pixels = room.take(static_cast<std::size_t>(width * height));
    const SurfaceHandle canvas(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels), CAIRO_FORMAT_ARGB32, static_cast<int>(width),
        static_cast<int>(height), static_cast<int>(width) * 4));
    const CairoHandle cairo(cairo_create(canvas.get()));
    Painter(cairo.get(), grid, appearance, Medium::pixels, parts_->box).paint(layout);
    cairo_surface_finish(canvas.get());
    return {.pixels = pixels, .width = static_cast<std::uint32_t>(width), .height = static_cast<std::uint32_t>(height)};
}

std::string Renderer::png(const WidgetLayout& layout, const Appearance& appearance, double scale) {
    return parts_->encoder.encode(pixels(layout, appearance, scale, parts_->room));
}

std::string Renderer::svg(const WidgetLayout& layout, const Appearance& appearance) {
    return vectorFile(VectorFormat::svg, layout.size,
                      [&](cairo_t* cairo) { draw(cairo, layout, appearance, vectorScale); });
}

std::string Renderer::pdf(const WidgetLayout& layout, const Appearance& appearance) {
    return vectorFile(VectorFormat::pdf, layout.size,
                      [&](cairo_t* cairo) { draw(cairo, layout, appearance, vectorScale); });
}

} // namespace host
