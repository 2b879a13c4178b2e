#include "Host/Drawing/VectorFiles.h"

#include "Host/Drawing/Handles.h"

#include <algorithm>
#include <array>
#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cstddef>
#include <map>
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
    // Instead of the current time, so that equal pictures are equal files.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "2001-01-01T00:00:00Z");
    return surface;
}

/// Numbers the ids of an SVG file from 0: `"image2553"` and `"#image2553"` become `"image0"` and `"#image0"`. Cairo
/// numbers pages and images through the life of the process.
std::string withStableNames(const std::string& svg) {
    constexpr std::array<std::string_view, 2> kinds{"surface", "image"};
    std::string out;
    out.reserve(svg.size());
    std::map<std::string, std::size_t, std::less<>> numbers;
    std::string_view rest = svg;
    for (std::size_t quote = rest.find('"'); quote != std::string_view::npos; quote = rest.find('"')) {
        const std::size_t start = quote + (rest.substr(quote + 1).starts_with('#') ? 2 : 1);
        out += rest.substr(0, start);
        rest.remove_prefix(start);
        const auto* kind = std::find_if(kinds.begin(), kinds.end(), [&](auto k) { return rest.starts_with(k); });
        if (kind == kinds.end()) {
            continue;
        }
        const std::size_t end = std::min(rest.size(), rest.find_first_not_of("0123456789", kind->size()));
        if (end > kind->size() && rest.substr(end).starts_with('"')) {
            const auto known = numbers.try_emplace(std::string(rest.substr(0, end)), numbers.size()).first;
            out.append(*kind).append(std::to_string(known->second));
            rest.remove_prefix(end);
        }
    }
    return out += rest;
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
    return format == VectorFormat::svg ? withStableNames(file) : file;
}

} // namespace host
