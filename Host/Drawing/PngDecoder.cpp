#include "Host/Drawing/PngDecoder.h"

#include "Host/Drawing/Handles.h"

#include <algorithm>
#include <cstring>

namespace host {
namespace {

/// The signature, and the header: its length, its name, width and height, eight bits, with alpha, no interlacing.
constexpr std::string_view start("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
constexpr std::string_view kind("\x08\x06\0\0\0", 5);
constexpr std::size_t kindOffset = 24;

std::uint32_t numberAt(std::string_view bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (const char c : bytes.substr(at, 4)) {
        number = number << 8 | static_cast<unsigned char>(c);
    }
    return number;
}

cairo_status_t read(void* closure, unsigned char* out, unsigned length) {
    auto& rest = *static_cast<std::string_view*>(closure);
    if (rest.size() < length) {
        return CAIRO_STATUS_READ_ERROR;
    }
    std::memcpy(out, rest.data(), length);
    rest.remove_prefix(length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

std::optional<std::vector<std::uint32_t>> decodePng(std::string_view bytes, int width, int height) {
    if (width <= 0 || height <= 0 || !bytes.starts_with(start) || bytes.substr(0, 64).size() < 64 ||
        numberAt(bytes, 16) != static_cast<std::uint32_t>(width) ||
        numberAt(bytes, 20) != static_cast<std::uint32_t>(height) || bytes.substr(kindOffset, kind.size()) != kind) {
        return std::nullopt;
    }
    const SurfaceHandle surface(cairo_image_surface_create_from_png_stream(read, &bytes));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS ||
        cairo_image_surface_get_format(surface.get()) != CAIRO_FORMAT_ARGB32 ||
        cairo_image_surface_get_width(surface.get()) != width ||
        cairo_image_surface_get_height(surface.get()) != height) {
        return std::nullopt;
    }
    const auto* row = cairo_image_surface_get_data(surface.get());
    const auto rowLength = static_cast<std::size_t>(width);
    std::vector<std::uint32_t> pixels(rowLength * static_cast<std::size_t>(height));
    for (auto out = pixels.begin(); out != pixels.end(); out += width) {
        std::memcpy(&*out, row, rowLength * sizeof(std::uint32_t));
        row += cairo_image_surface_get_stride(surface.get());
    }
    return pixels;
}

} // namespace host
