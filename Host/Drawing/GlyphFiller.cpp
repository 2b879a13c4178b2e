#include "Host/Drawing/GlyphFiller.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <pango/pangocairo.h>
#include <utility>

namespace host {
namespace {

constexpr std::size_t keptOutlines = 2048;
constexpr double unitsOfPixel = 64;
/// What FreeType can count.
constexpr std::size_t greatestPointCount = std::numeric_limits<short>::max();

using PathHandle = std::unique_ptr<cairo_path_t, Releaser<cairo_path_destroy>>;

struct Mask {
    unsigned char* pixels;
    int stride;
    int width;
    int height;
};

/// Adds the coverage, because glyphs may share the pixels between them. Rows are counted upwards, the first is -1.
void addSpans(int y, int count, const FT_Span* spans, void* user) {
    const Mask& mask = *static_cast<const Mask*>(user);
    const int fromTop = -1 - y;
    if (fromTop < 0 || fromTop >= mask.height) {
        return;
    }
    unsigned char* const row = mask.pixels + static_cast<std::ptrdiff_t>(fromTop) * mask.stride;
    for (const FT_Span* span = spans; span != spans + count; ++span) {
        const int end = std::min(span->x + span->len, mask.width);
        for (int x = std::max<int>(span->x, 0); x < end; ++x) {
            row[x] = static_cast<unsigned char>(std::min(row[x] + span->coverage, 255));
        }
    }
}

} // namespace

GlyphFiller::GlyphFiller() : outlines_(keptOutlines) {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) == 0) {
        library_.reset(library);
    }
}

void GlyphFiller::fill(PangoFont* font, const PangoGlyphInfo& glyph, Point origin, double scale,
                       cairo_surface_t* mask) {
    Outline& known = outline(font, glyph.glyph, scale);
    if (!library_ || known.contourEnds.empty()) {
        return;
    }
    FT_Outline outline{};
    outline.n_contours = static_cast<Index>(known.contourEnds.size());
    outline.n_points = static_cast<Index>(known.points.size());
    outline.points = known.points.data();
    outline.tags = known.tags.data();
    outline.contours = known.contourEnds.data();

    const double unit = scale / PANGO_SCALE;
    const long x = std::lround((origin.x + glyph.geometry.x_offset * unit) * unitsOfPixel);
    const long y = -std::lround((origin.y + glyph.geometry.y_offset * unit) * unitsOfPixel);
    cairo_surface_flush(mask);
    Mask pixels{cairo_image_surface_get_data(mask), cairo_image_surface_get_stride(mask),
                cairo_image_surface_get_width(mask), cairo_image_surface_get_height(mask)};
    FT_Raster_Params params{};
    params.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT;
    params.gray_spans = addSpans;
    params.user = &pixels;
    FT_Outline_Translate(&outline, x, y);
    FT_Outline_Render(library_.get(), &outline, &params);
    FT_Outline_Translate(&outline, -x, -y);
    cairo_surface_mark_dirty(mask);
}

GlyphFiller::Outline& GlyphFiller::outline(PangoFont* font, PangoGlyph glyph, double scale) {
    if (Outline* known = outlines_.find({font, glyph, scale})) {
        return *known;
    }
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const CairoHandle cairo(cairo_create(surface.get()));
    cairo_scale(cairo.get(), scale, scale);
    cairo_move_to(cairo.get(), 0, 0);
    PangoGlyphInfo alone{};
    alone.glyph = glyph;
    int cluster = 0;
    PangoGlyphString string{1, &alone, &cluster};
    pango_cairo_glyph_string_path(cairo.get(), font, &string);
    // The path is wanted in pixels.
    cairo_identity_matrix(cairo.get());
    const PathHandle path(cairo_copy_path(cairo.get()));
    Key key{ObjectHandle<PangoFont>(static_cast<PangoFont*>(g_object_ref(font))), glyph, scale};
    return outlines_.insert(std::move(key), outlineOf(*path));
}

GlyphFiller::Outline GlyphFiller::outlineOf(const cairo_path_t& path) {
    Outline outline;
    for (int at = 0; at < path.num_data; at += path.data[at].header.length) {
        const cairo_path_data_t* const segment = path.data + at;
        switch (segment->header.type) {
        case CAIRO_PATH_MOVE_TO:
            outline.endContour();
            outline.add(segment[1], FT_CURVE_TAG_ON);
            break;
        case CAIRO_PATH_LINE_TO:
            outline.add(segment[1], FT_CURVE_TAG_ON);
            break;
        case CAIRO_PATH_CURVE_TO:
            outline.add(segment[1], FT_CURVE_TAG_CUBIC);
            outline.add(segment[2], FT_CURVE_TAG_CUBIC);
            outline.add(segment[3], FT_CURVE_TAG_ON);
            break;
        case CAIRO_PATH_CLOSE_PATH:
            break;
        }
    }
    outline.endContour();
    return outline.points.size() <= greatestPointCount ? outline : Outline{};
}

void GlyphFiller::Outline::add(const cairo_path_data_t& data, int tag) {
    points.push_back({std::lround(data.point.x * unitsOfPixel), -std::lround(data.point.y * unitsOfPixel)});
    tags.push_back(static_cast<Tag>(tag));
}

void GlyphFiller::Outline::endContour() {
    if (!points.empty()) {
        contourEnds.push_back(static_cast<Index>(points.size() - 1));
    }
}

} // namespace host
