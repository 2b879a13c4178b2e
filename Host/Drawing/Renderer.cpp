#include "Host/Drawing/Renderer.h"

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/Painter.h"
#include "Host/Drawing/PngEncoder.h"
#include "Host/Drawing/VectorFiles.h"

#include <algorithm>
#include <cstdint>
#include <fontconfig/fontconfig.h>

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
    /// What the last picture was drawn on.
    SurfaceHandle canvas;

    /// A clear surface; the pixels of a row follow those of the last without a gap.
    cairo_surface_t* clearCanvas(int width, int height);
};

cairo_surface_t* Renderer::Parts::clearCanvas(int width, int height) {
    if (!canvas || cairo_image_surface_get_width(canvas.get()) != width ||
        cairo_image_surface_get_height(canvas.get()) != height) {
        canvas.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
        return canvas.get();
    }
    // Clearing it by cairo, not by hand, lets cairo know that it is clear.
    const CairoHandle cairo(cairo_create(canvas.get()));
    cairo_set_operator(cairo.get(), CAIRO_OPERATOR_CLEAR);
    cairo_paint(cairo.get());
    return canvas.get();
}

Renderer::Renderer() : parts_(std::make_unique<Parts>()) {}
Renderer::~Renderer() = default;

void Renderer::warmUp() {
    FcInit();
}

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

std::string Renderer::png(const WidgetLayout& layout, const Appearance& appearance, double scale) {
    const PixelGrid grid(scale);
    const double width = grid.edge(layout.size.width);
    const double height = grid.edge(layout.size.height);
    if (!(width >= 1 && height >= 1 && width <= greatestSide && height <= greatestSide)) {
        return {};
    }
    cairo_surface_t* canvas = parts_->clearCanvas(static_cast<int>(width), static_cast<int>(height));
    const CairoHandle cairo(cairo_create(canvas));
    Painter(cairo.get(), grid, appearance, Medium::pixels, parts_->box).paint(layout);
    cairo_surface_flush(canvas);
    const unsigned char* pixels = cairo_image_surface_get_data(canvas);
    if (pixels == nullptr) {
        return {};
    }
    return parts_->encoder.encode({.pixels = reinterpret_cast<const std::uint32_t*>(pixels),
                                   .width = static_cast<std::uint32_t>(width),
                                   .height = static_cast<std::uint32_t>(height)});
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
