#include "Host/Drawing/Shapes.h"

#include "Host/Drawing/Palette.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <numbers>

namespace host {

void setSource(cairo_t* cairo, const Rgba& color) {
    cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
}

void addRoundedRect(cairo_t* cairo, const Rect& rect, double radius) {
    constexpr double quarter = std::numbers::pi / 2;
    const double r = std::min(radius, std::min(rect.width, rect.height) / 2);
    if (r <= 0) {
        cairo_rectangle(cairo, rect.x, rect.y, rect.width, rect.height);
        return;
    }
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, rect.right() - r, rect.y + r, r, -quarter, 0);
    cairo_arc(cairo, rect.right() - r, rect.bottom() - r, r, 0, quarter);
    cairo_arc(cairo, rect.x + r, rect.bottom() - r, r, quarter, 2 * quarter);
    cairo_arc(cairo, rect.x + r, rect.y + r, r, 2 * quarter, 3 * quarter);
    cairo_close_path(cairo);
}

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
