#include "Host/Drawing/Handles.h"
#include "Host/Drawing/PathData.h"
#include "Host/Drawing/SymbolArtwork.h"
#include "Host/Drawing/SymbolSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>

namespace host {
namespace {

/// Every name that the extension or a document type may ask for.
constexpr const char* names =
    "folder folder.badge.gearshape doc doc.text doc.richtext doc.plaintext terminal globe archivebox "
    "chevron.left.forwardslash.chevron.right list.bullet.rectangle photo play.rectangle bookmark "
    "dot.radiowaves.left.and.right tablecells tag video waveform envelope newspaper cylinder.split.1x2 "
    "gearshape.2 star text.book.closed checkmark.circle exclamationmark.circle lightbulb lightbulb.slash "
    "rectangle.stack macwindow";

TEST(Symbols, EveryNameHasArtworkOfItsOwn) {
    SymbolSet symbols;
    std::set<std::string> pictures;
    const auto coverage = [&](std::string_view name) {
        cairo_surface_t* mask = symbols.mask(name, 24);
        cairo_surface_flush(mask);
        EXPECT_EQ(cairo_image_surface_get_height(mask), 24 + 2 * SymbolSet::maskMargin);
        const auto size = static_cast<std::size_t>(cairo_image_surface_get_stride(mask)) *
                          static_cast<std::size_t>(cairo_image_surface_get_height(mask));
        return std::string(reinterpret_cast<const char*>(cairo_image_surface_get_data(mask)), size);
    };
    for (const SymbolArtwork& symbol : symbolArtwork()) {
        const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
        EXPECT_TRUE(addPathData(CairoHandle(cairo_create(surface.get())).get(), symbol.pathData)) << symbol.name;
        const std::string picture = coverage(symbol.name);
        EXPECT_GT(std::count_if(picture.begin(), picture.end(), [](char c) { return c < 0; }), 40) << symbol.name;
        EXPECT_TRUE(pictures.insert(picture).second) << symbol.name << " looks like another";
    }
    const std::string fallback = coverage("unknown");
    std::istringstream words(names);
    for (std::string name; words >> name;) {
        EXPECT_NE(coverage(name), fallback) << name;
    }
    for (const char* name : {"", "no.such.symbol", "folder.", "Folder"}) {
        EXPECT_EQ(coverage(name), fallback) << name;
    }
}

} // namespace
} // namespace host
