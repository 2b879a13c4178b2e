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

/// As large as the picture, but without memory; of no size where that would have no pixels or too many.
Canvas canvasFor(const WidgetLayout& layout, double scale) {
    const PixelGrid grid(scale);
    const double width = grid.edge(layout.size.width);
    const double height = grid.edge(layout.size.height);
    if (!(width >= 1 && height >= 1 && width <= Renderer::greatestSide && height <= Renderer::greatestSide)) {
        return {};
    }
    return {.width = static_cast<std::uint32_t>(width), .height = static_cast<std::uint32_t>(height)};
}

std::size_t areaOf(const Canvas& canvas) {
    return std::size_t{canvas.width} * canvas.height;
}

} // namespace

struct Renderer::Parts {
    PaintBox box;
    PngEncoder encoder;
    Room<std::uint32_t> room;

    /// `paint` gets a painter whose origin is that pixel of the canvas.
    template <class Paint>
    void paintOn(const Canvas& canvas, Point origin, const Appearance& appearance, double scale, Paint paint) {
        const int width = static_cast<int>(canvas.width);
        const SurfaceHandle surface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(canvas.pixels),
                                                                        CAIRO_FORMAT_ARGB32, width,
                                                                        static_cast<int>(canvas.height), width * 4));
        const CairoHandle cairo(cairo_create(surface.get()));
        cairo_translate(cairo.get(), origin.x, origin.y);
        paint(Painter(cairo.get(), PixelGrid(scale), appearance, Medium::pixels, box));
        cairo_surface_finish(surface.get());
    }
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
    Canvas canvas = canvasFor(layout, scale);
    canvas.pixels = areaOf(canvas) > 0 ? room.take(areaOf(canvas)) : nullptr;
    return drawn(canvas, layout, appearance, scale);
}

PixelView Renderer::pixels(const WidgetLayout& layout, const Appearance& appearance, double scale,
                           std::vector<std::uint32_t>& vector) {
    Canvas canvas = canvasFor(layout, scale);
    vector.resize(areaOf(canvas));
    canvas.pixels = vector.data();
    return drawn(canvas, layout, appearance, scale);
}

PixelView Renderer::drawn(const Canvas& canvas, const WidgetLayout& layout, const Appearance& appearance,
                          double scale) {
    if (areaOf(canvas) == 0) {
        return {};
    }
    // It need not be clear: the tile takes the place of all that is there.
    parts_->paintOn(canvas, {}, appearance, scale, [&](Painter painter) { painter.paint(layout); });
    return {.pixels = canvas.pixels, .width = canvas.width, .height = canvas.height};
}

void Renderer::drawBadge(const Canvas& canvas, Point origin, const WidgetLayout& layout, const Appearance& appearance,
                         double scale) {
    parts_->paintOn(canvas, origin, appearance, scale, [&](Painter painter) { painter.paintBadge(layout); });
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
