#include "Host/Desktop/TilePaint.h"

#include "Host/Drawing/Shapes.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gdk/gdk.h>

namespace host {
namespace {

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

/// Returns the frame, moved and stretched by less than a pixel so that the picture's pixels are the surface's. Returns it
/// unchanged if the picture has another size.
Rect onPixels(cairo_t* cairo, const RenderedTile& rendered, Rect frame) {
    double width = frame.width;
    double height = frame.height;
    cairo_user_to_device_distance(cairo, &width, &height);
    if (std::abs(width - rendered.picture.width) >= 1 || std::abs(height - rendered.picture.height) >= 1) {
        return frame;
    }
    cairo_user_to_device(cairo, &frame.x, &frame.y);
    frame = {std::round(frame.x), std::round(frame.y), static_cast<double>(rendered.picture.width),
             static_cast<double>(rendered.picture.height)};
    cairo_device_to_user(cairo, &frame.x, &frame.y);
    cairo_device_to_user_distance(cairo, &frame.width, &frame.height);
    return frame;
}

using PatternHandle = std::unique_ptr<cairo_pattern_t, Releaser<cairo_pattern_destroy>>;

/// The share of a shadow's colour from its outer to its inner end, in equal steps: near enough to a Gaussian blur.
constexpr std::array<double, 7> shadowProfile{0, 0.02, 0.12, 0.5, 0.88, 0.98, 1};

void addProfile(cairo_pattern_t* pattern, double inner, double outer, const Rgba& color) {
    constexpr double steps = shadowProfile.size() - 1;
    for (std::size_t i = 0; i < shadowProfile.size(); ++i) {
        const double offset = outer + (inner - outer) * static_cast<double>(i) / steps;
        cairo_pattern_add_color_stop_rgba(pattern, offset, color.red, color.green, color.blue,
                                          color.alpha * shadowProfile.at(i));
    }
}

/// Draws a blurred rectangle in eight pieces: a gradient for each edge and each corner. Leaves out what lies further in
/// than `depth`.
void paintShadow(cairo_t* cairo, const Rect& frame, double reach, double depth, const Rgba& color) {
    const std::array<double, 4> columns{frame.x - reach, frame.x + depth, frame.right() - depth, frame.right() + reach};
    const std::array<double, 4> rows{frame.y - reach, frame.y + depth, frame.bottom() - depth, frame.bottom() + reach};
    const double extent = depth + reach;
    const double inner = (depth - reach) / extent;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            if (row == 1 && column == 1) {
                continue;
            }
            // The gradient's inner end.
            const double x = columns.at(column == 0 ? 1 : 2);
            const double y = rows.at(row == 0 ? 1 : 2);
            const double toX = column == 1 ? x : columns.at(column == 0 ? 0 : 3);
            const double toY = row == 1 ? y : rows.at(row == 0 ? 0 : 3);
            const PatternHandle gradient(row == 1 || column == 1 ? cairo_pattern_create_linear(x, y, toX, toY)
                                                                 : cairo_pattern_create_radial(x, y, 0, x, y, extent));
            addProfile(gradient.get(), inner, 1, color);
            cairo_set_source(cairo, gradient.get());
            cairo_rectangle(cairo, columns.at(column), rows.at(row), columns.at(column + 1) - columns.at(column),
                            rows.at(row + 1) - rows.at(row));
            cairo_fill(cairo);
        }
    }
}

/// Draws outside the tile only, so that a translucent tile is not darker.
void paintShadows(cairo_t* cairo, const Rect& frame, double unit, const Palette& palette) {
    cairo_save(cairo);
    const Rect all = outsetBy(frame, shadowMargin);
    cairo_rectangle(cairo, all.x, all.y, all.width, all.height);
    addRoundedRect(cairo, frame, cornerRadius * unit);
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_clip(cairo);
    // Antialiased edges of neighbouring pieces would show.
    cairo_set_antialias(cairo, CAIRO_ANTIALIAS_NONE);
    for (const Palette::Shadow& shadow : palette.shadows()) {
        const Rect rect{frame.x, frame.y + shadow.drop, frame.width, frame.height};
        paintShadow(cairo, rect, shadow.reach, std::max(cornerRadius * unit, shadow.reach), shadow.color);
    }
    cairo_restore(cairo);
}

Rect outlineOf(const Mark& mark) {
    return mark.cornerRadius > 0 ? mark.frame : outsetBy(mark.frame, markOutsetAcross, markOutsetDown);
}

double radiusOf(const Mark& mark) {
    return mark.cornerRadius > 0 ? mark.cornerRadius : markRadius;
}

} // namespace

void paintTile(cairo_t* cairo, const RenderedTile& rendered, const Rect& frame, Backdrop backdrop, double alpha) {
    if (rendered.picture.width <= 0 || rendered.picture.height <= 0) {
        return;
    }
    const Rect place = onPixels(cairo, rendered, frame);
    const double unit = place.width * rendered.scale / rendered.picture.width;
    const Palette palette(rendered.appearance);
    if (backdrop == Backdrop::opaque) {
        // Under the corners' pixels, too.
        Rgba ground = palette.tile();
        ground.alpha = 1;
        setSource(cairo, ground);
        cairo_rectangle(cairo, place.x, place.y, place.width, place.height);
        cairo_fill(cairo);
    } else if (backdrop == Backdrop::transparent && alpha == 1) {
        paintShadows(cairo, place, unit, palette);
    }
    cairo_save(cairo);
    cairo_translate(cairo, place.x, place.y);
    cairo_scale(cairo, place.width / rendered.picture.width, place.height / rendered.picture.height);
    cairo_set_source_surface(cairo, rendered.picture.surface.get(), 0, 0);
    cairo_paint_with_alpha(cairo, alpha);
    cairo_restore(cairo);
}

void fillMark(cairo_t* cairo, const Mark& mark, const Rgba& color) {
    setSource(cairo, color);
    addRoundedRect(cairo, outlineOf(mark), radiusOf(mark));
    cairo_fill(cairo);
}

void strokeMark(cairo_t* cairo, const Mark& mark, const Rgba& color) {
    setSource(cairo, color);
    cairo_set_line_width(cairo, focusWidth);
    addRoundedRect(cairo, outsetBy(outlineOf(mark), -focusWidth / 2), radiusOf(mark) - focusWidth / 2);
    cairo_stroke(cairo);
}

RegionHandle roundedRegion(const Rect& rect, double radius) {
    const SurfaceHandle mask(cairo_image_surface_create(CAIRO_FORMAT_A1, static_cast<int>(std::ceil(rect.right())),
                                                        static_cast<int>(std::ceil(rect.bottom()))));
    const CairoHandle cairo(cairo_create(mask.get()));
    addRoundedRect(cairo.get(), rect, radius);
    cairo_fill(cairo.get());
    return RegionHandle(gdk_cairo_region_create_from_surface(mask.get()));
}

} // namespace host
