#include "Host/Drawing/TextPictures.h"

#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <pango/pangocairo.h>
#include <string>

namespace host {
namespace {

/// The line as cairo fills its outlines, in a surface like the picture's.
SurfaceHandle filledByCairo(const ShapedLine& line, const TextPicture& picture, double scale) {
    SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, cairo_image_surface_get_width(picture.mask.get()),
                                                     cairo_image_surface_get_height(picture.mask.get())));
    const CairoHandle cairo(cairo_create(surface.get()));
    cairo_translate(cairo.get(), -picture.left, -picture.top);
    cairo_scale(cairo.get(), scale, scale);
    double left = 0;
    for (const auto& run : line.runs()) {
        cairo_move_to(cairo.get(), left, 0);
        pango_cairo_glyph_string_path(cairo.get(), run->item->analysis.font, run->glyphs);
        left += static_cast<double>(pango_glyph_string_get_width(run->glyphs)) / PANGO_SCALE;
    }
    cairo_fill(cairo.get());
    cairo_surface_flush(surface.get());
    return surface;
}

TEST(TextPictures, AreFilledAsCairoFillsThem) {
    Typesetter typesetter;
    TextPictures pictures(typesetter);
    for (const std::string text :
         {"Favorites, %8&@ƒ…", "夏目漱石『草枕』読書ノート", "دفتر ملاحظات السفر", "עברית ועוד", "Ǻ é̂̃"}) {
        for (const double scale : {1.0, 1.5, 3.0}) {
            const TextPicture& picture = pictures.picture(text, platform::headline, scale, Tone::color);
            ASSERT_TRUE(picture.mask) << text;
            const SurfaceHandle other = filledByCairo(typesetter.line(text, platform::headline), picture, scale);
            cairo_surface_flush(picture.mask.get());
            const unsigned char* const ours = cairo_image_surface_get_data(picture.mask.get());
            const unsigned char* const theirs = cairo_image_surface_get_data(other.get());
            const int stride = cairo_image_surface_get_stride(other.get());
            const int height = cairo_image_surface_get_height(other.get());
            int ink = 0;
            int others = 0;
            for (int i = 0; i < stride * height; ++i) {
                // Cairo samples the coverage, and takes glyphs that meet as one shape.
                others += std::abs(ours[i] - theirs[i]) > 64 ? 1 : 0;
                ink += ours[i] > 128 ? 1 : 0;
            }
            EXPECT_GT(ink, 10) << text;
            EXPECT_LE(others, ink / 100) << text;
        }
    }
}

} // namespace
} // namespace host
