#include "Host/Drawing/Handles.h"
#include "Host/Drawing/PathData.h"
#include "Host/Drawing/SymbolArtwork.h"
#include "Host/Drawing/SymbolSet.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace host {
namespace {

using Numbers = std::array<double, 6>;

/// Returns the extents of the path and its end, rounded to hundredths; nothing if the data is malformed.
std::optional<Numbers> pathOf(const char* data) {
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const CairoHandle cairo(cairo_create(surface.get()));
    // Large enough for curves to be exact.
    cairo_scale(cairo.get(), 1000, 1000);
    if (!addPathData(cairo.get(), data)) {
        return std::nullopt;
    }
    Numbers found{};
    cairo_path_extents(cairo.get(), &found[0], &found[1], &found[2], &found[3]);
    cairo_get_current_point(cairo.get(), &found[4], &found[5]);
    for (double& number : found) {
        // Adding 0 turns -0 into 0.
        number = std::round(number * 100) / 100 + 0.0;
    }
    return found;
}

TEST(PathData, ReadsTheCommandsInUse) {
    struct Row {
        const char* data;
        std::optional<Numbers> expected;
    };
    for (const Row& row : std::vector<Row>{
             {" M 1 2 L 3 -4.5\n", {{1, -4.5, 3, 2, 3, -4.5}}},
             {"M 1 2 H 5 V 9", {{1, 2, 5, 9, 5, 9}}},
             {"M 2 2 L 3 5 Z", {{2, 2, 3, 5, 2, 2}}},
             {"M 0 0 C 0 4 8 4 8 0", {{0, 0, 8, 3, 8, 0}}},
             // Arcs the shorter and the longer way, either way round.
             {"M 1 0 A 1 1 0 0 1 0 1", {{0, 0, 1, 1, 0, 1}}},
             {"M 1 0 A 1 1 0 1 0 0 1", {{-1, -1, 1, 1, 0, 1}}},
             {"M 1 0 A 1 1 0 1 1 0 1", {{0, 0, 2, 2, 0, 1}}},
             {"M -1 0 A 1 1 0 0 0 1 0", {{-1, 0, 1, 1, 1, 0}}},
             {"M 2 0 A 2 1 0 0 1 0 1", {{0, 0, 2, 1, 0, 1}}},
             // Radii that cannot span the distance grow until they do.
             {"M -1 0 A .1 .1 0 0 1 1 0", {{-1, -1, 1, 0, 1, 0}}},
             {"M 1 0 A 1 1 0 0 0 1 0", {{1, 0, 1, 0, 1, 0}}},
             {"L 1 1", {}},
             {"M 1", {}},
             {"M 1 1 X 2 2", {}},
             {"M 1 1 L 2 nan", {}},
             {"M 1 1 L2 2", {}},
             {"M 1 1 A 1 1 0 0 1 3", {}},
         }) {
        EXPECT_EQ(pathOf(row.data), row.expected) << row.data;
    }
}

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
