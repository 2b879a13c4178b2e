#include "Pictures.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace host {
namespace {

using platform::Color;

using AppearanceTest = PictureTest;

TEST_F(AppearanceTest, LevelsAreAsStrongAsTheyShouldBe) {
    struct Case {
        platform::Foreground level;
        double light;
        double dark;
    };
    for (const Case& c :
         {Case{platform::primary, 0.88, 0.92}, {platform::secondary, 0.60, 0.62}, {platform::tertiary, 0.46, 0.46}}) {
        for (const Appearance& appearance : {light, dark}) {
            const bool isLight = appearance.scheme == ColorScheme::light;
            const Pixel ink = isLight ? Pixel{0, 0, 0, 255} : Pixel{255, 255, 255, 255};
            const Pixel expected = over(ink, isLight ? c.light : c.dark, tileOf(appearance));
            // A stroke of the letter is more than a pixel wide, so that some pixels are all ink.
            const Picture text =
                picture(textAt(renderer, {40, 40}, "HI", platform::largeTitle, c.level), 3, appearance);
            const Picture symbol = picture(symbolAt({40, 40, 60, 60}, c.level), 3, appearance);
            for (const Picture* drawn : {&text, &symbol}) {
                const Box strongest = boxOf(*drawn, [&](const Pixel& p) { return difference(p, expected) <= 1; });
                EXPECT_GT(strongest.width(), 10) << isLight;
                const Box beyond = boxOf(
                    *drawn, [&](const Pixel& p) { return isLight ? p[0] < expected[0] - 1 : p[0] > expected[0] + 1; });
                EXPECT_LE(beyond.width(), 0) << isLight;
            }
        }
    }
}

TEST_F(AppearanceTest, PlaceholdersTellNothing) {
    const Appearance redacted{.redaction = Redaction::placeholder};
    const auto saying = [&](std::string text) {
        LayoutItem item = textAt(renderer, {30, 40}, "placeholder", platform::callout);
        std::get<TextItem>(item.content).text.lines = {{text, 70}, {"x" + text, 40}};
        return item;
    };
    EXPECT_NE(picture(saying("one")), picture(saying("two")));
    const Picture block = picture(saying("one"), 2, redacted);
    EXPECT_EQ(block, picture(saying("two"), 2, redacted));
    EXPECT_EQ(inkOf(block).left, 60);
    EXPECT_EQ(inkOf(block).right, 200);
    // Flat inside, and a gap between the lines.
    const Pixel inside = block.at(100, inkOf(block).top + 4);
    EXPECT_EQ(inside, block.at(140, inkOf(block).top + 4));
    EXPECT_GT(difference(inside, tileOf(light)), 15);
    EXPECT_LE(difference(block.at(100, inkOf(block).top + 22), tileOf(light)), 3);

    LayoutItem globe = symbolAt({30, 40, 20, 20});
    std::get<SymbolItem>(globe.content).symbol = "globe";
    EXPECT_EQ(picture(symbolAt({30, 40, 20, 20}), 2, redacted), picture(globe, 2, redacted));
    EXPECT_EQ(picture(imageAt({30, 40, 20, 20}, plainPicture(9, 9, {255, 0, 0, 255})), 2, redacted),
              picture(imageAt({30, 40, 20, 20}, plainPicture(7, 7, {0, 0, 255, 255})), 2, redacted));
    const LayoutItem divider{.content = DividerItem{}, .frame = {30, 40, 100, 1}};
    EXPECT_EQ(picture(divider, 2, redacted), picture(divider, 2));
    const Pixel dot = picture(circleAt({30, 40, 10, 10}, Color::red), 2, redacted).at(70, 90);
    EXPECT_GT(dot[0] - dot[1], 15);
    EXPECT_LT(dot[0] - dot[1], 100);
}

TEST_F(AppearanceTest, TintedWidgetsHaveOneColour) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        const Appearance tinted{.scheme = scheme, .mode = DrawingMode::tinted};
        const Pixel tint = scheme == ColorScheme::light ? Pixel{0, 0x7A, 0xFF, 255} : Pixel{0x0A, 0x84, 0xFF, 255};
        const auto centre = [&](LayoutItem item) { return picture(std::move(item), 2, tinted).at(100, 100); };
        const auto isGray = [](const Pixel& p) { return p[0] == p[1] && p[1] == p[2]; };
        for (const Color color : {Color::red, Color::green, Color::blue, Color::yellow, Color::purple, Color::gray}) {
            EXPECT_EQ(centre(circleAt({45, 45, 10, 10}, color, true)), tint);
            EXPECT_TRUE(isGray(centre(circleAt({45, 45, 10, 10}, color, false))));
        }
        EXPECT_EQ(centre(circleAt({45, 45, 10, 10}, Color::white, true)), (Pixel{255, 255, 255, 255}));
        EXPECT_TRUE(isGray(centre(imageAt({40, 40, 20, 20}, plainPicture(9, 9, {200, 30, 90, 255})))));

        LayoutItem symbol = symbolAt({20, 20, 120, 120}, platform::secondary);
        symbol.accented = true;
        const Box blue = boxOf(picture(symbol, 2, tinted), [](const Pixel& p) { return p[2] > p[0] + 60; });
        EXPECT_GT(blue.width(), 150);
    }
}

TEST_F(AppearanceTest, VibrantTextIsStrongerAndColoursAreWeaker) {
    const Appearance vibrant{.mode = DrawingMode::vibrant};
    const auto darkest = [&](const Appearance& appearance) {
        int least = 255;
        for (const Pixel& p :
             picture(textAt(renderer, {40, 40}, "HI", platform::largeTitle, platform::secondary), 3, appearance)
                 .pixels) {
            least = p[3] > 240 ? std::min(least, p[0]) : least;
        }
        return least;
    };
    EXPECT_LT(darkest(vibrant) + 15, darkest(light));
    const Pixel weak = picture(circleAt({45, 45, 10, 10}, Color::red), 2, vibrant).at(100, 100);
    EXPECT_GT(weak[0] - weak[1], 40);
    EXPECT_LT(weak[0] - weak[1], 0xFF - 0x3B - 40);
}

} // namespace
} // namespace host
