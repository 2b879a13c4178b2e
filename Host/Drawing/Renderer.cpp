#include "Host/Drawing/Renderer.h"

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/Painter.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

namespace host {
namespace {

/// Vector pictures are aligned to half points, so that they are sharp on screens of scale 2.
constexpr double vectorScale = 2;

cairo_status_t append(void* file, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(file)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

SurfaceHandle makePage(VectorFormat format, Size size, std::string& file) {
    if (format == VectorFormat::svg) {
        SurfaceHandle surface(cairo_svg_surface_create_for_stream(append, &file, size.width, size.height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
        return surface;
    }
    SurfaceHandle surface(cairo_pdf_surface_create_for_stream(append, &file, size.width, size.height));
    // Instead of the current time, so that equal pictures are equal files.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "2001-01-01T00:00:00Z");
    return surface;
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
    Painter(cairo.get(), grid, appearance, PictureKind::pixels, *caches_).paint(layout);
    cairo_surface_flush(picture.surface.get());
    return picture;
}

void Renderer::drawBadge(const PixelBuffer& picture, Point origin, const WidgetLayout& layout,
                         const Appearance& appearance, double scale) {
    const CairoHandle cairo(cairo_create(picture.surface.get()));
    cairo_translate(cairo.get(), origin.x, origin.y);
    Painter(cairo.get(), PixelGrid(scale), appearance, PictureKind::pixels, *caches_).paintBadge(layout);
}

std::string Renderer::vectorFile(VectorFormat format, const WidgetLayout& layout, const Appearance& appearance) {
    std::string file;
    const SurfaceHandle page = makePage(format, layout.size, file);
    const CairoHandle cairo(cairo_create(page.get()));
    cairo_scale(cairo.get(), 1 / vectorScale, 1 / vectorScale);
    Painter(cairo.get(), PixelGrid(vectorScale), appearance, PictureKind::vector, *caches_).paint(layout);
    cairo_show_page(cairo.get());
    cairo_surface_finish(page.get());
    return cairo_surface_status(page.get()) == CAIRO_STATUS_SUCCESS ? file : std::string();
}

} // namespace host
