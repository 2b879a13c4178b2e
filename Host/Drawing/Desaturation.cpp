#include "Host/Drawing/Desaturation.h"

#include "Host/Drawing/Palette.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace host {

void desaturate(cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    unsigned char* row = cairo_image_surface_get_data(surface);
    const auto rowBytes = static_cast<std::size_t>(cairo_image_surface_get_width(surface)) * 4;
    for (int y = 0; y < cairo_image_surface_get_height(surface); ++y, row += cairo_image_surface_get_stride(surface)) {
        for (std::size_t x = 0; x < rowBytes; x += 4) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + x, sizeof pixel);
            const std::uint32_t alpha = pixel >> 24;
            if (alpha == 0) {
                continue;
            }
            const auto component = [&](int shift) { return static_cast<double>(pixel >> shift & 0xff) / alpha; };
            const double gray = grayOf({component(16), component(8), component(0), 1});
            const auto value = static_cast<std::uint32_t>(std::lround(gray * alpha));
            pixel = alpha << 24 | value * 0x010101U;
            std::memcpy(row + x, &pixel, sizeof pixel);
        }
    }
    cairo_surface_mark_dirty(surface);
}

} // namespace host
