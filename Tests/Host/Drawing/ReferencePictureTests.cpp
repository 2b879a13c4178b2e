// Compares tiles with reviewed pictures in Tests/Fixtures/Pictures. Set WRITE_PICTURES to write them.
//
// Versions of FreeType, cairo, Pango and the font differ in single pixels of letters, so squares of 8 × 8 pixels are
// compared by their means. Between Debian 12, which the pictures are from, and Debian 13, where the font is a newer
// one, a square differs by up to 64 of 255, all of them by 0.75 on average. The bounds are half as much again;
// without letters they are narrow.
#include "Host/Drawing/Badges.h"
#include "Host/Drawing/PngFile.h"
#include "Host/Drawing/SymbolArtwork.h"
#include "Host/Layout/Measures.h"
#include "Platform/Views/Divider.h"
#include "Platform/Views/Image.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"
#include "Tests/Host/Drawing/Pictures.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

namespace host {
namespace {

using namespace platform; // NOLINT(google-build-using-namespace): views read like the pictures they draw

constexpr int side = 8;
struct Bounds {
    int max = 96;
    double mean = 1.1;
};
constexpr Bounds withoutLetters{.max = 12, .mean = 0.1};

View sample() {
    const auto row = [](const char* name, const char* title, const char* detail, Color dot) {
        return hStack(
            {.spacing = 6},
            {circle(dot).frame({.width = 6, .height = 6}).accentable(), symbol(name).font(title3).foreground(secondary),
             vStack({.alignment = HorizontalAlignment::leading, .spacing = 0},
                    {text(title).lineLimit(1), text(detail).font(caption).foreground(secondary).lineLimit(1)})});
    };
    return vStack({.alignment = HorizontalAlignment::leading, .spacing = 4},
                  {hStack({}, {text("Reading List").font(headline), spacer(),
                               text("12")
                                   .font(caption2)
                                   .foreground(Color::white)
                                   .padding({.top = 1, .bottom = 1, .leading = 6, .trailing = 6})
                                   .capsuleBackground(Color::blue)}),
                   row("folder", "A short history of the index card, and of what came after it in libraries",
                       "Research › שלום", Color::red),
                   divider(), row("no.such.symbol", "Pending Review", "~/Databases/Research", Color::green), divider(),
                   text("Lines that break between words are as high as their style says, and end in an ellipsis where "
                        "there is no more room")
                       .font(caption)
                       .foreground(tertiary)
                       .lineLimit(2)});
}

/// Without letters.
View shapes() {
    Picture quarters = plainPicture(160, 120, {200, 30, 90, 255});
    for (int y = 0; y < 60; ++y) {
        std::fill_n(&quarters.at(0, y), 80, Pixel{20, 160, 60, 255});
        std::fill_n(&quarters.at(80, y), 80, Pixel{255, 255, 255, 128});
    }
    const EncodedData picture(Data::owning(imageFile(quarters, "png")), EncodedData::Encoding::raw);
    const auto row = [&](const char* name, const Foreground& level, Color fill) {
        return hStack({}, {symbol(name).font(largeTitle).foreground(level), symbol("no.such.symbol").foreground(fill),
                           image(picture, clear()).frame({.width = 32, .height = 32}), spacer(),
                           circle(fill).frame({.width = 12, .height = 12}).accentable(),
                           symbol("star").foreground(Color::white).accentable().capsuleBackground(fill)});
    };
    return vStack({.spacing = 4},
                  {row("folder", primary, Color::red), divider(), row("globe", secondary, Color::green), divider(),
                   row("doc.text", tertiary, Color::purple), divider(), row("star", Color::blue, Color::yellow)});
}

/// Every symbol, so that each command of their paths is seen.
View symbols() {
    constexpr std::size_t columns = 9;
    Views rows;
    Views row;
    for (const SymbolArtwork& each : symbolArtwork()) {
        row.push_back(symbol(std::string(each.name)).font(largeTitle));
        if (row.size() == columns || &each == &symbolArtwork().back()) {
            rows.push_back(hStack({}, std::exchange(row, {})));
        }
    }
    return vStack({.alignment = HorizontalAlignment::leading}, rows);
}

struct Reference {
    const char* name;
    TileStyle style;
    /// Drawn over the tile.
    std::optional<View> badge;
    View view = sample();
    Bounds bounds = {};
};

std::vector<Reference> references() {
    const Appearance light{};
    const Appearance dark{.scheme = ColorScheme::dark};
    const auto shapesIn = [](const char* name, const TileStyle& style) {
        return Reference{.name = name, .style = style, .view = shapes(), .bounds = withoutLetters};
    };
    return {
        {"light-1", {.appearance = light, .scale = 1}},
        {"light-1.25", {.appearance = light, .scale = 1.25}},
        {"light-2", {.appearance = light, .scale = 2}},
        {"dark-3", {.appearance = dark, .scale = 3}},
        shapesIn("shapes-dark", {.appearance = dark, .scale = 1.25}),
        shapesIn("shapes-tinted",
                 {.appearance = {.mode = DrawingMode::tinted, .accent = Rgba{0.8, 0.3, 0.1}}, .scale = 1}),
        shapesIn("shapes-vibrant", {.appearance = {.mode = DrawingMode::vibrant}, .scale = 2}),
        {.name = "symbols", .style = {.scale = 4}, .view = symbols(), .bounds = withoutLetters},
        {"high-contrast", {.appearance = {.contrast = Contrast::high}, .scale = 2}},
        {"placeholder",
         {.appearance = {.redaction = Redaction::placeholder}, .scale = 2},
         failedAsOfBadge("as of 10:42")},
        {"right-to-left", {.scale = 1.5, .direction = Direction::rightToLeft}, failureMark()},
        {"badge-dark", {.appearance = dark, .scale = 2}, asOfBadge("as of 10:42")},
        {.name = "message",
         .style = {.scale = 2},
         .view = messageView("Nothing opens this link",
                             {"Install the application that it belongs to, or choose another in the settings of the "
                              "desktop: it has a list of them."},
                             MessageButton{"Undo", "x:undo"})},
    };
}

/// Returns the means of squares, premultiplied, as two halves, one below the other: colours, and alpha.
Picture downsampled(const PixelBuffer& picture) {
    const int columns = (picture.width + side - 1) / side;
    const int rows = (picture.height + side - 1) / side;
    Picture small = plainPicture(columns, rows * 2, {0, 0, 0, 255});
    for (int at = 0; at < columns * rows; ++at) {
        const int left = at % columns * side;
        const int top = at / columns * side;
        const int right = std::min(left + side, picture.width);
        const int bottom = std::min(top + side, picture.height);
        std::array<int, 4> sums{};
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                const std::uint32_t pixel = picture.pixels()[static_cast<std::size_t>(y * picture.width + x)];
                for (std::size_t channel = 0; channel < 4; ++channel) {
                    sums.at(channel) += static_cast<int>(pixel >> (channel * 8) & 0xFFU);
                }
            }
        }
        const int count = (right - left) * (bottom - top);
        small.at(at % columns, at / columns) = {sums[2] / count, sums[1] / count, sums[0] / count, 255};
        small.at(at % columns, at / columns + rows) = {sums[3] / count, sums[3] / count, sums[3] / count, 255};
    }
    return small;
}

TEST(ReferencePictures, AreStillDrawn) {
    Renderer renderer;
    for (const Reference& reference : references()) {
        RenderedTile tile = renderTile(reference.view, familySize("medium"), reference.style, renderer);
        if (reference.badge) {
            drawBadge(tile, *reference.badge, reference.style, renderer);
        }
        const Picture actual = downsampled(tile.picture);
        const std::string path = std::string(FIXTURES_FOLDER "/Pictures/") + reference.name + ".png";
        if (std::getenv("WRITE_PICTURES") != nullptr) {
            std::ofstream(path, std::ios::binary) << imageFile(actual, "png");
        }
        std::ifstream file(path, std::ios::binary);
        const Picture expected = decoded(std::string(std::istreambuf_iterator<char>(file), {}));
        ASSERT_EQ(std::pair(actual.width, actual.height), std::pair(expected.width, expected.height)) << path;
        int max = 0;
        double sum = 0;
        for (std::size_t i = 0; i < actual.pixels.size(); ++i) {
            const int found = difference(actual.pixels[i], expected.pixels[i]);
            max = std::max(max, found);
            sum += found;
        }
        const double mean = sum / static_cast<double>(actual.pixels.size());
        EXPECT_LE(max, reference.bounds.max) << path;
        EXPECT_LE(mean, reference.bounds.mean) << path;
    }
}

} // namespace
} // namespace host
