#include "Host/Drawing/OutlineFiller.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace host {
namespace {

constexpr double unitsOfPixel = 64;
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

OutlineFiller::OutlineFiller() {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) == 0) {
        library_.reset(library);
    }
}

void OutlineFiller::fill(cairo_t* cairo, cairo_surface_t* mask) {
    // The path is wanted in pixels.
    cairo_save(cairo);
    cairo_identity_matrix(cairo);
    const PathHandle path(cairo_copy_path(cairo));
    cairo_restore(cairo);
    take(*path);
    if (!library_ || points_.size() > greatestPointCount) {
        cairo_fill(cairo);
        return;
    }
    cairo_new_path(cairo);
    FT_Outline outline{};
    outline.n_contours = static_cast<short>(contourEnds_.size());
    outline.n_points = static_cast<short>(points_.size());
    outline.points = points_.data();
    outline.tags = tags_.data();
    outline.contours = contourEnds_.data();

    cairo_surface_flush(mask);
    Mask pixels{cairo_image_surface_get_data(mask), cairo_image_surface_get_stride(mask),
                cairo_image_surface_get_width(mask), cairo_image_surface_get_height(mask)};
    FT_Raster_Params params{};
    params.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT;
    params.gray_spans = addSpans;
    params.user = &pixels;
    FT_Outline_Render(library_.get(), &outline, &params);
    cairo_surface_mark_dirty(mask);
}

void OutlineFiller::take(const cairo_path_t& path) {
    points_.clear();
    tags_.clear();
    contourEnds_.clear();
    for (int at = 0; at < path.num_data; at += path.data[at].header.length) {
        const cairo_path_data_t* const segment = path.data + at;
        switch (segment->header.type) {
        case CAIRO_PATH_MOVE_TO:
            endContour();
            add(segment[1], FT_CURVE_TAG_ON);
            break;
        case CAIRO_PATH_LINE_TO:
            add(segment[1], FT_CURVE_TAG_ON);
            break;
        case CAIRO_PATH_CURVE_TO:
            add(segment[1], FT_CURVE_TAG_CUBIC);
            add(segment[2], FT_CURVE_TAG_CUBIC);
            add(segment[3], FT_CURVE_TAG_ON);
            break;
        case CAIRO_PATH_CLOSE_PATH:
            break;
        }
    }
    endContour();
}

void OutlineFiller::add(const cairo_path_data_t& data, int tag) {
    // FreeType's rows count upwards.
    points_.push_back({std::lround(data.point.x * unitsOfPixel), -std::lround(data.point.y * unitsOfPixel)});
    tags_.push_back(static_cast<char>(tag));
}

void OutlineFiller::endContour() {
    if (!points_.empty()) {
        contourEnds_.push_back(static_cast<short>(points_.size() - 1));
    }
}

} // namespace host
