#include "Host/Drawing/SymbolSet.h"

#include "Host/Drawing/PathData.h"
#include "Host/Drawing/SymbolArtwork.h"
#include "Host/Layout/Geometry.h"

#include <algorithm>
#include <cstdint>

namespace host {
namespace {

constexpr std::string_view fallbackName = "unknown";
/// The strokes of larger symbols are so thick that half a pixel makes no difference.
constexpr int maxFittedSize = 40;

const SymbolArtwork& artworkOf(std::string_view name) {
    const auto all = symbolArtwork();
    const auto found = std::lower_bound(
        all.begin(), all.end(), name, [](const SymbolArtwork& each, std::string_view key) { return each.name < key; });
    return found != all.end() && found->name == name ? *found : artworkOf(fallbackName);
}

void strokePath(cairo_t* cairo, std::string_view pathData, double size) {
    cairo_save(cairo);
    cairo_scale(cairo, size / symbolGrid, size / symbolGrid);
    cairo_new_path(cairo);
    addPathData(cairo, pathData);
    cairo_set_line_width(cairo, symbolStroke);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(cairo);
    cairo_restore(cairo);
}

SurfaceHandle maskOf(std::string_view pathData, int size, Point offset) {
    const int side = size + 2 * SymbolSet::maskMargin;
    SurfaceHandle mask(cairo_image_surface_create(CAIRO_FORMAT_A8, side, side));
    const CairoHandle cairo(cairo_create(mask.get()));
    cairo_translate(cairo.get(), SymbolSet::maskMargin + offset.x, SymbolSet::maskMargin + offset.y);
    strokePath(cairo.get(), pathData, size);
    return mask;
}

/// Returns how sharp the mask is: the higher, the more of the ink is in full pixels.
std::uint64_t sharpness(cairo_surface_t* mask) {
    cairo_surface_flush(mask);
    const unsigned char* row = cairo_image_surface_get_data(mask);
    const int width = cairo_image_surface_get_width(mask);
    std::uint64_t sum = 0;
    for (int y = 0; y < cairo_image_surface_get_height(mask); ++y, row += cairo_image_surface_get_stride(mask)) {
        for (int x = 0; x < width; ++x) {
            sum += std::uint64_t{row[x]} * row[x];
        }
    }
    return sum;
}

/// Returns the mask; a small symbol's with an offset of up to half a pixel, so that most of its edges are on pixel edges.
SurfaceHandle fittedMask(std::string_view pathData, int size) {
    SurfaceHandle best = maskOf(pathData, size, {});
    if (size > maxFittedSize) {
        return best;
    }
    // Only for a clear gain, since the symbol is not centred then.
    auto toBeat = static_cast<double>(sharpness(best.get())) * 1.04;
    for (const Point offset : {Point{0.5, 0}, Point{0, 0.5}, Point{0.5, 0.5}}) {
        SurfaceHandle moved = maskOf(pathData, size, offset);
        if (const auto found = static_cast<double>(sharpness(moved.get())); found > toBeat) {
            best = std::move(moved);
            toBeat = found;
        }
    }
    return best;
}

} // namespace

void SymbolSet::stroke(cairo_t* cairo, std::string_view name, double size) const {
    strokePath(cairo, artworkOf(name).pathData, size);
}

cairo_surface_t* SymbolSet::mask(std::string_view name, int size) {
    const auto& [known, pathData] = artworkOf(name);
    SurfaceHandle& mask = masks_[{known, size}];
    if (!mask) {
        mask = fittedMask(pathData, size);
    }
    return mask.get();
}

} // namespace host
