#include "Host/Drawing/VectorFiles.h"

#include "Host/Drawing/Handles.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cstddef>
#include <string_view>

namespace host {
namespace {

cairo_status_t append(void* file, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(file)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

SurfaceHandle page(VectorFormat format, Size size, std::string& file) {
    if (format == VectorFormat::svg) {
        SurfaceHandle surface(cairo_svg_surface_create_for_stream(append, &file, size.width, size.height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
        return surface;
    }
    SurfaceHandle surface(cairo_pdf_surface_create_for_stream(append, &file, size.width, size.height));
    // Instead of the time, so that equal pictures are equal files.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "2001-01-01T00:00:00Z");
    return surface;
}

/// Cairo names the page after the number of the surface, which nothing refers to and which is never the same twice.
void removePageName(std::string& svg) {
    constexpr std::string_view name = " id=\"surface";
    const std::size_t start = svg.find(std::string("<g") += name);
    const std::size_t end = start == std::string::npos ? start : svg.find('>', start);
    if (end != std::string::npos) {
        svg.erase(start + 2, end - start - 2);
    }
}

} // namespace

std::string vectorFile(VectorFormat format, Size size, const std::function<void(cairo_t*)>& draw) {
    std::string file;
    const SurfaceHandle surface = page(format, size, file);
    const CairoHandle cairo(cairo_create(surface.get()));
    draw(cairo.get());
    cairo_show_page(cairo.get());
    cairo_surface_finish(surface.get());
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        return {};
    }
    if (format == VectorFormat::svg) {
        removePageName(file);
    }
    return file;
}

} // namespace host
