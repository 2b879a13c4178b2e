#include "Host/Desktop/TilePaint.h"

#include "Host/Drawing/Shapes.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr double shadowDrop = 3;
/// The shadow is laid in this many sheets, each a little larger and fainter.
constexpr int shadowSheets = 7;
constexpr double sheetStep = 2;
constexpr double sheetAlpha = 0.06;

/// Rows lie close above each other.
constexpr double markOutsetAcross = 6;
constexpr double markOutsetDown = 1.5;
constexpr double markRadius = 6;
constexpr double focusWidth = 2;

Rect outsetBy(const Rect& rect, double across, double down) {
    return {rect.x - across, rect.y - down, rect.width + 2 * across, rect.height + 2 * down};
}
Rect outsetBy(const Rect& rect, double distance) {
    return outsetBy(rect, distance, distance);
}

/// The frame, moved and stretched by less than a pixel so that pixels of the picture are pixels of the surface, where
/// it has as many.
Rect onPixels(cairo_t* cairo, const RenderedTile& rendered, Rect frame) {
    double width = frame.width;
    double height = frame.height;
    cairo_user_to_device_distance(cairo, &width, &height);
    if (std::abs(width - rendered.width) >= 1 || std::abs(height - rendered.height) >= 1) {
        return frame;
    }
    cairo_user_to_device(cairo, &frame.x, &frame.y);
    frame = {std::round(frame.x), std::round(frame.y), static_cast<double>(rendered.width),
             static_cast<double>(rendered.height)};
    cairo_device_to_user(cairo, &frame.x, &frame.y);
    cairo_device_to_user_distance(cairo, &frame.width, &frame.height);
    return frame;
}

Rgba groundOf(ColorScheme scheme) {
    return scheme == ColorScheme::light ? Rgba{0.965, 0.965, 0.973, 1} : Rgba{0.149, 0.149, 0.165, 1};
}

/// Outside the tile only: nothing of it is to darken what shines through.
void paintShadow(cairo_t* cairo, const Rect& frame, double radius) {
    cairo_save(cairo);
    const Rect all = outsetBy(frame, shadowMargin);
    cairo_rectangle(cairo, all.x, all.y, all.width, all.height);
    addRoundedRect(cairo, frame, radius);
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_clip(cairo);
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
    for (int sheet = 0; sheet < shadowSheets; ++sheet) {
        const double outset = sheet * sheetStep;
        Rect rect = outsetBy(frame, outset);
        rect.y += shadowDrop;
        addRoundedRect(cairo, rect, radius + outset);
        const double rest = 1 - static_cast<double>(sheet) / shadowSheets;
        setSource(cairo, {0, 0, 0, sheetAlpha * rest * rest});
        cairo_fill(cairo);
    }
    cairo_restore(cairo);
}

} // namespace

void paintTile(cairo_t* cairo, const RenderedTile& rendered, const Rect& frame, Backdrop backdrop, double alpha) {
    if (rendered.width <= 0 || rendered.height <= 0) {
        return;
    }
    const Rect place = onPixels(cairo, rendered, frame);
    const double unit = place.width * rendered.scale / rendered.width;
    if (backdrop == Backdrop::opaque) {
        setSource(cairo, groundOf(rendered.appearance.scheme));
        cairo_rectangle(cairo, place.x, place.y, place.width, place.height);
        cairo_fill(cairo);
    } else if (alpha == 1) {
        paintShadow(cairo, place, cornerRadius * unit);
    }
    // Cairo only reads what it is given as a source.
    auto* pixels = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(rendered.pixels.data()));
    const SurfaceHandle picture(cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_ARGB32, rendered.width,
                                                                    rendered.height, rendered.width * 4));
    cairo_save(cairo);
    cairo_translate(cairo, place.x, place.y);
    cairo_scale(cairo, place.width / rendered.width, place.height / rendered.height);
    cairo_set_source_surface(cairo, picture.get(), 0, 0);
    cairo_paint_with_alpha(cairo, alpha);
    cairo_restore(cairo);
}

void paintHover(cairo_t* cairo, const Rect& frame, ColorScheme scheme) {
    const double gray = scheme == ColorScheme::light ? 0 : 1;
    setSource(cairo, {gray, gray, gray, 0.07});
    addRoundedRect(cairo, outsetBy(frame, markOutsetAcross, markOutsetDown), markRadius);
    cairo_fill(cairo);
}

void paintFocus(cairo_t* cairo, const Rect& frame, const Rgba& accent) {
    setSource(cairo, accent);
    cairo_set_line_width(cairo, focusWidth);
    addRoundedRect(cairo, outsetBy(frame, markOutsetAcross - focusWidth / 2, markOutsetDown), markRadius);
    cairo_stroke(cairo);
}

RegionHandle roundedRegion(const Rect& rect, double radius) {
    RegionHandle region(cairo_region_create());
    const int height = static_cast<int>(std::ceil(rect.height));
    for (int row = 0; row < height; ++row) {
        // How far the middle of the row reaches into a corner.
        const double middle = row + 0.5;
        const double depth = std::max({radius - middle, middle - (rect.height - radius), 0.0});
        const double inset = radius - std::sqrt(std::max(0.0, radius * radius - depth * depth));
        const cairo_rectangle_int_t line{static_cast<int>(std::round(rect.x + inset)), static_cast<int>(rect.y) + row,
                                         static_cast<int>(std::round(rect.width - 2 * inset)), 1};
        cairo_region_union_rectangle(region.get(), &line);
    }
    return region;
}

} // namespace host
