#include "Host/Drawing/SymbolArtwork.h"
#include "Host/Drawing/SymbolSet.h"

#include <algorithm>
#include <array>
#include <cairo.h>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace host {
namespace {

/// Every name that the extension or a document type may ask for.
constexpr std::array names{"folder",
                           "folder.badge.gearshape",
                           "doc",
                           "doc.text",
                           "doc.richtext",
                           "doc.plaintext",
                           "terminal",
                           "globe",
                           "archivebox",
                           "chevron.left.forwardslash.chevron.right",
                           "list.bullet.rectangle",
                           "photo",
                           "play.rectangle",
                           "bookmark",
                           "dot.radiowaves.left.and.right",
                           "tablecells",
                           "tag",
                           "video",
                           "waveform",
                           "envelope",
                           "newspaper",
                           "cylinder.split.1x2",
                           "gearshape.2",
                           "star",
                           "text.book.closed",
                           "checkmark.circle",
                           "exclamationmark.circle",
                           "lightbulb",
                           "lightbulb.slash",
                           "rectangle.stack",
                           "macwindow"};

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
    for (const SymbolArtwork& symbol : symbolArtwork()) {
        known.insert(symbol.name);
        const auto picture = coverage(symbols, symbol.name, 24);
        EXPECT_GT(std::count_if(picture.begin(), picture.end(), [](auto c) { return c > 128; }), 40) << symbol.name;
        EXPECT_TRUE(pictures.insert(picture).second) << symbol.name << " looks like another";
    }
    for (const char* name : names) {
        EXPECT_TRUE(known.contains(name)) << name;
    }
}

TEST(Symbols, FillTheGridAndStayWithinIt) {
    for (const SymbolArtwork& symbol : symbolArtwork()) {
        ASSERT_TRUE(parsePathData(symbol.pathData)) << symbol.name;
        // Drawn with room all around, at ten pixels a unit.
        constexpr int unit = 10;
        constexpr int margin = 5 * unit;
        constexpr int side = static_cast<int>(symbolGrid) * unit + 2 * margin;
        const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, side, side));
        const CairoHandle cairo(cairo_create(surface.get()));
        cairo_translate(cairo.get(), margin, margin);
        SymbolSet().stroke(cairo.get(), symbol.name, symbolGrid * unit);
        cairo_surface_flush(surface.get());

        int left = side;
        int right = 0;
        int top = side;
        int bottom = 0;
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const auto offset = std::ptrdiff_t{y} * cairo_image_surface_get_stride(surface.get()) + x;
                if (cairo_image_surface_get_data(surface.get())[offset] > 127) {
                    left = std::min(left, x - margin);
                    right = std::max(right, x + 1 - margin);
                    top = std::min(top, y - margin);
                    bottom = std::max(bottom, y + 1 - margin);
                }
            }
        }
        EXPECT_GE(std::min(left, top), 1 * unit) << symbol.name;
        EXPECT_LE(std::max(right, bottom), 23 * unit) << symbol.name;
        // One family: the longer side is about the same in all, and all stand in the middle.
        EXPECT_NEAR(std::max(right - left, bottom - top), 19 * unit, 2.2 * unit) << symbol.name;
        EXPECT_NEAR((left + right) / 2.0, 12 * unit, 1.1 * unit) << symbol.name;
        EXPECT_NEAR((top + bottom) / 2.0, 12 * unit, 1.1 * unit) << symbol.name;
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

TEST(Symbols, StraightStrokesAreCrispAtTheSizesInUse) {
    // The window's frame and title bar are straight lines: on the pixel grid some row is nearly all ink.
    SymbolSet symbols;
    for (const int size : {12, 24}) {
        for (const char* name : {"macwindow", "list.bullet.rectangle", "terminal", "photo"}) {
            const auto pixels = coverage(symbols, name, size);
            const int side = size + 2 * SymbolSet::maskMargin;
            int darkest = 0;
            for (int y = 0; y < side; ++y) {
                int sum = 0;
                for (int x = 0; x < side; ++x) {
                    sum += pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(side) +
                                     static_cast<std::size_t>(x));
                }
                darkest = std::max(darkest, sum / side);
            }
            EXPECT_GT(darkest, 110) << name << " at " << size;
        }
    }
}

} // namespace
} // namespace host
