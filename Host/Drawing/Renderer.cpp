#include "Host/Drawing/Renderer.h"

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/Painter.h"
#include "Host/Drawing/VectorFiles.h"

namespace host {
namespace {

/// Vector pictures are aligned to half points, so that they are sharp on screens of scale 2.
constexpr double vectorScale = 2;

std::string vectorPicture(VectorFormat format, const WidgetLayout& layout, const Appearance& appearance,
                          RenderCaches& caches) {
    return vectorFile(format, layout.size, [&](cairo_t* cairo) {
        cairo_scale(cairo, 1 / vectorScale, 1 / vectorScale);
        Painter(cairo, PixelGrid(vectorScale), appearance, Output::vector, caches).paint(layout);
    });
}

} // namespace

Renderer::Renderer() : caches_(std::make_unique<RenderCaches>()) {}
Renderer::~Renderer() = default;

TextMeasurer& Renderer::texts() {
    return caches_->typesetter;
}
ImageMeasurer& Renderer::images() {
    return caches_->icons;
}

PixelBuffer Renderer::pixels(const WidgetLayout& layout, const Appearance& appearance, double scale) {
    const PixelGrid grid(scale);
    const double width = grid.edge(layout.size.width);
    const double height = grid.edge(layout.size.height);
    if (!(width >= 1 && height >= 1 && width <= maxSide && height <= maxSide)) {
        return {};
    }
    PixelBuffer picture{.width = static_cast<int>(width), .height = static_cast<int>(height)};
    picture.surface.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, picture.width, picture.height));
    if (cairo_surface_status(picture.surface.get()) != CAIRO_STATUS_SUCCESS) {
        return {};
    }
    const CairoHandle cairo(cairo_create(picture.surface.get()));
    Painter(cairo.get(), grid, appearance, Output::pixels, *caches_).paint(layout);
    cairo_surface_flush(picture.surface.get());
    return picture;
}

void Renderer::drawBadge(const PixelBuffer& picture, Point origin, const WidgetLayout& layout,
                         const Appearance& appearance, double scale) {
    const CairoHandle cairo(cairo_create(picture.surface.get()));
    cairo_translate(cairo.get(), origin.x, origin.y);
    Painter(cairo.get(), PixelGrid(scale), appearance, Output::pixels, *caches_).paintBadge(layout);
}

std::string Renderer::svg(const WidgetLayout& layout, const Appearance& appearance) {
    return vectorPicture(VectorFormat::svg, layout, appearance, *caches_);
}

std::string Renderer::pdf(const WidgetLayout& layout, const Appearance& appearance) {
    return vectorPicture(VectorFormat::pdf, layout, appearance, *caches_);
}

} // namespace host
