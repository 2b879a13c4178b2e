#include "Host/Drawing/TextPictures.h"

#include <algorithm>
#include <cmath>
#include <hb-ot.h>
#include <pango/pangocairo.h>

namespace host {
namespace {

constexpr std::size_t keptBytes = std::size_t{6} << 20;

bool hasColors(PangoFont* font) {
    hb_face_t* face = hb_font_get_face(pango_font_get_hb_font(font));
    return hb_ot_color_has_png(face) != 0 || hb_ot_color_has_layers(face) != 0 || hb_ot_color_has_svg(face) != 0;
}

struct Bounds {
    int left;
    int top;
    int width;
    int height;
};

/// The pixels that any ink of the line may touch.
Bounds inkBounds(const ShapedLine& line, double scale) {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int x = 0;
    for (const auto& run : line.runs()) {
        PangoRectangle ink;
        pango_glyph_string_extents(run->glyphs, run->item->analysis.font, &ink, nullptr);
        left = std::min(left, x + ink.x);
        top = std::min(top, ink.y);
        right = std::max(right, x + ink.x + ink.width);
        bottom = std::max(bottom, ink.y + ink.height);
        x += pango_glyph_string_get_width(run->glyphs);
    }
    const double pixels = scale / PANGO_SCALE;
    const auto before = [&](int length) { return static_cast<int>(std::floor(length * pixels)) - 1; };
    const auto after = [&](int length) { return static_cast<int>(std::ceil(length * pixels)) + 1; };
    return {before(left), before(top), after(right) - before(left), after(bottom) - before(top)};
}

/// A surface of the line's bounds and something that draws on it in points from the line's origin.
struct Canvas {
    Canvas(cairo_format_t format, const Bounds& bounds, double scale)
        : surface(cairo_image_surface_create(format, bounds.width, bounds.height)), cairo(cairo_create(surface.get())) {
        cairo_translate(cairo.get(), -bounds.left, -bounds.top);
        cairo_scale(cairo.get(), scale, scale);
    }
    SurfaceHandle surface;
    CairoHandle cairo;
};

TextPicture rasterize(const ShapedLine& line, double scale, Tone tone, GlyphFiller& filler) {
    const Bounds bounds = inkBounds(line, scale);
    TextPicture picture{nullptr, nullptr, bounds.left, bounds.top};

    std::unique_ptr<Canvas> mask;
    std::unique_ptr<Canvas> colors;
    int x = 0;
    for (const auto& run : line.runs()) {
        PangoFont* font = run->item->analysis.font;
        const bool isColored = hasColors(font);
        auto& canvas = isColored ? colors : mask;
        if (!canvas) {
            canvas = std::make_unique<Canvas>(isColored ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_A8, bounds, scale);
        }
        for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
            PangoGlyphInfo& glyph = run->glyphs->glyphs[i];
            if (isColored) {
                PangoGlyphString alone{1, &glyph, run->glyphs->log_clusters + i};
                cairo_move_to(canvas->cairo.get(), static_cast<double>(x) / PANGO_SCALE, 0);
                pango_cairo_show_glyph_string(canvas->cairo.get(), font, &alone);
            } else {
                // Outlines, unlike glyph images, need not start on whole pixels.
                const Point origin{x * scale / PANGO_SCALE - bounds.left, static_cast<double>(-bounds.top)};
                filler.fill(font, glyph, origin, scale, canvas->surface.get());
            }
            x += glyph.geometry.width;
        }
    }
    if (mask) {
        picture.mask = std::move(mask->surface);
    }
    if (colors) {
        picture.colors = std::move(colors->surface);
        if (tone == Tone::gray) {
            desaturate(picture.colors.get());
        }
    }
    return picture;
}

std::size_t bytes(const SurfaceHandle& surface) {
    return surface ? static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get())) *
                         static_cast<std::size_t>(cairo_image_surface_get_height(surface.get()))
                   : 0;
}

} // namespace

TextPictures::TextPictures(Typesetter& typesetter) : typesetter_(typesetter), pictures_(keptBytes) {}

const TextPicture& TextPictures::picture(std::string_view line, platform::Font font, double scale, Tone tone) {
    const TextSeek key(line, font, scale, tone == Tone::gray ? 1 : 0);
    if (const TextPicture* known = pictures_.find(key)) {
        return *known;
    }
    TextPicture picture = rasterize(typesetter_.line(line, font), scale, tone, filler_);
    const std::size_t weight = bytes(picture.mask) + bytes(picture.colors) + line.size() + 256;
    return pictures_.insert(TextKey(key), std::move(picture), weight);
}

} // namespace host
