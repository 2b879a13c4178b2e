#include "Host/Drawing/PathData.h"
#include "Host/Drawing/SymbolArtwork.h"
#include "Host/Drawing/SymbolSet.h"

#include <algorithm>
#include <cairo.h>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace host {
namespace {

/// Every name that the extension or a document type may ask for.
constexpr const char* names =
    "folder folder.badge.gearshape doc doc.text doc.richtext doc.plaintext terminal globe archivebox "
    "chevron.left.forwardslash.chevron.right list.bullet.rectangle photo play.rectangle bookmark "
    "dot.radiowaves.left.and.right tablecells tag video waveform envelope newspaper cylinder.split.1x2 "
    "gearshape.2 star text.book.closed checkmark.circle exclamationmark.circle lightbulb lightbulb.slash "
    "rectangle.stack macwindow";

/// The coverage of a symbol, row after row, without the mask's padding.
std::vector<std::uint8_t> coverage(SymbolSet& symbols, std::string_view name, int size) {
    cairo_surface_t* mask = symbols.mask(name, size);
    cairo_surface_flush(mask);
    const int side = size + 2 * SymbolSet::maskMargin;
    EXPECT_EQ(cairo_image_surface_get_width(mask), side);
    EXPECT_EQ(cairo_image_surface_get_height(mask), side);
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < side; ++y) {
        const unsigned char* row =
            cairo_image_surface_get_data(mask) + std::ptrdiff_t{y} * cairo_image_surface_get_stride(mask);
        pixels.insert(pixels.end(), row, row + side);
    }
    return pixels;
}

TEST(Symbols, EveryNameHasArtworkOfItsOwn) {
    std::set<std::string_view> known;
    std::set<std::vector<std::uint8_t>> pictures;
    SymbolSet symbols;
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const CairoHandle cairo(cairo_create(surface.get()));
    for (const SymbolArtwork& symbol : symbolArtwork()) {
        cairo_new_path(cairo.get());
        EXPECT_TRUE(addPathData(cairo.get(), symbol.pathData)) << symbol.name;
        known.insert(symbol.name);
        const auto picture = coverage(symbols, symbol.name, 24);
        EXPECT_GT(std::count_if(picture.begin(), picture.end(), [](auto c) { return c > 128; }), 40) << symbol.name;
        EXPECT_TRUE(pictures.insert(picture).second) << symbol.name << " looks like another";
    }
    std::istringstream words(names);
    for (std::string name; words >> name;) {
        EXPECT_TRUE(known.contains(name)) << name;
    }
}

TEST(Symbols, UnknownNamesShareTheFallback) {
    SymbolSet symbols;
    const auto fallback = coverage(symbols, "unknown", 12);
    for (const char* name : {"", "no.such.symbol", "folder.", "Folder"}) {
        EXPECT_EQ(coverage(symbols, name, 12), fallback) << name;
    }
    EXPECT_NE(coverage(symbols, "doc", 12), fallback);
}

} // namespace
} // namespace host
