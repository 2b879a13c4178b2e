#include "Host/Drawing/Shapes.h"

#include <algorithm>
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

} // namespace host
