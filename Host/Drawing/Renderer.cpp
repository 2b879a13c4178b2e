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

/// A picture's size, without its pixels; none where it would have none or too many.
PixelView pixelSize(const WidgetLayout& layout, double scale) {
    const PixelGrid grid(scale);
    const double width = grid.edge(layout.size.width);
    const double height = grid.edge(layout.size.height);
    if (!(width >= 1 && height >= 1 && width <= Renderer::greatestSide && height <= Renderer::greatestSide)) {
        return {};
    }
    return {.width = static_cast<std::uint32_t>(width), .height = static_cast<std::uint32_t>(height)};
}

std::size_t areaOf(const PixelView& picture) {
    return std::size_t{picture.width} * picture.height;
}

} // namespace

struct Renderer::Parts {
    PaintBox box;
    PngEncoder encoder;
    Room<std::uint32_t> room;

    /// Answers `pixels`, of whatever content: the tile takes the place of all that is there.
    std::uint32_t* draw(const WidgetLayout& layout, const Appearance& appearance, double scale, const PixelView& size,
                        std::uint32_t* pixels) {
        const int width = static_cast<int>(size.width);
        const SurfaceHandle canvas(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels),
                                                                       CAIRO_FORMAT_ARGB32, width,
                                                                       static_cast<int>(size.height), width * 4));
        const CairoHandle cairo(cairo_create(canvas.get()));
        Painter(cairo.get(), PixelGrid(scale), appearance, Medium::pixels, box).paint(layout);
        cairo_surface_finish(canvas.get());
        return pixels;
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
    PixelView picture = pixelSize(layout, scale);
    if (picture.width > 0) {
        picture.pixels = parts_->draw(layout, appearance, scale, picture, room.take(areaOf(picture)));
    }
    return picture;
}

PixelView Renderer::pixels(const WidgetLayout& layout, const Appearance& appearance, double scale,
                           std::vector<std::uint32_t>& vector) {
    PixelView picture = pixelSize(layout, scale);
    vector.resize(areaOf(picture));
    if (picture.width > 0) {
        picture.pixels = parts_->draw(layout, appearance, scale, picture, vector.data());
    }
    return picture;
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
