#include "Host/Drawing/SymbolSet.h"

#include "Host/Drawing/SymbolArtwork.h"

#include <cstdint>

namespace host {
namespace {

constexpr std::string_view fallbackName = "unknown";
constexpr std::size_t keptMasks = 256;
/// Where strokes are thick enough, half a pixel makes no difference to them.
constexpr int greatestFittedSize = 40;

void addPath(cairo_t* cairo, const Path& path) {
    struct Adder {
        cairo_t* cairo;
        void operator()(const MoveTo& s) const { cairo_move_to(cairo, s.to.x, s.to.y); }
        void operator()(const LineTo& s) const { cairo_line_to(cairo, s.to.x, s.to.y); }
        void operator()(const CurveTo& s) const {
            cairo_curve_to(cairo, s.control1.x, s.control1.y, s.control2.x, s.control2.y, s.to.x, s.to.y);
        }
        void operator()(const ClosePath& /*unused*/) const { cairo_close_path(cairo); }
    };
    for (const PathSegment& segment : path) {
        std::visit(Adder{cairo}, segment);
    }
}

void strokePath(cairo_t* cairo, const Path& path, double size) {
    cairo_save(cairo);
    cairo_scale(cairo, size / symbolGrid, size / symbolGrid);
    addPath(cairo, path);
    cairo_set_line_width(cairo, symbolStroke);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(cairo);
    cairo_restore(cairo);
}

SurfaceHandle maskOf(const Path& path, int size, Point offset) {
    const int side = size + 2 * SymbolSet::maskMargin;
    SurfaceHandle mask(cairo_image_surface_create(CAIRO_FORMAT_A8, side, side));
    const CairoHandle cairo(cairo_create(mask.get()));
    cairo_translate(cairo.get(), SymbolSet::maskMargin + offset.x, SymbolSet::maskMargin + offset.y);
    strokePath(cairo.get(), path, size);
    return mask;
}

/// The more of the ink lies in full pixels, the greater.
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

/// A small symbol may move by half a pixel either way, to where most of its edges fall between pixels.
SurfaceHandle fittedMask(const Path& path, int size) {
    SurfaceHandle best = maskOf(path, size, {});
    if (size > greatestFittedSize) {
        return best;
    }
    // Only a clear gain is worth being off the centre.
    auto toBeat = static_cast<double>(sharpness(best.get())) * 1.04;
    for (const Point offset : {Point{0.5, 0}, Point{0, 0.5}, Point{0.5, 0.5}}) {
        SurfaceHandle moved = maskOf(path, size, offset);
        if (const auto found = static_cast<double>(sharpness(moved.get())); found > toBeat) {
            best = std::move(moved);
            toBeat = found;
        }
    }
    return best;
}

} // namespace

SymbolSet::SymbolSet() : masks_(keptMasks) {
    for (const SymbolArtwork& symbol : symbolArtwork()) {
        artwork_.emplace(symbol.name, Artwork{symbol.pathData, {}});
    }
}

SymbolSet::Table::value_type& SymbolSet::artwork(std::string_view name) {
    auto found = artwork_.find(name);
    if (found == artwork_.end()) {
        found = artwork_.find(fallbackName);
    }
    Artwork& artwork = found->second;
    if (artwork.path.empty()) {
        artwork.path = parsePathData(artwork.data).value_or(Path{});
    }
    return *found;
}

void SymbolSet::stroke(cairo_t* cairo, std::string_view name, double size) {
    strokePath(cairo, artwork(name).second.path, size);
}

cairo_surface_t* SymbolSet::mask(std::string_view name, int size) {
    const auto& [known, symbol] = artwork(name);
    const MaskKey key{known, size};
    if (const auto* mask = masks_.find(key)) {
        return mask->get();
    }
    return masks_.insert(key, fittedMask(symbol.path, size)).get();
}

} // namespace host
