#include "Pictures.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

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

TEST_F(AppearanceTest, TheAccentColourIsTheTint) {
    const Appearance tinted{.mode = DrawingMode::tinted, .accent = Rgba{0.2, 0.4, 0.6}};
    EXPECT_EQ(picture(circleAt({45, 45, 10, 10}, Color::red, true), 2, tinted).at(100, 100),
              (Pixel{51, 102, 153, 255}));
    LayoutItem plain = circleAt({45, 45, 10, 10}, Color::red);
    EXPECT_EQ(picture(plain, 2, tinted), picture(plain, 2, {.mode = DrawingMode::tinted}));
    const LayoutItem accented = circleAt({45, 45, 10, 10}, Color::red, true);
    EXPECT_EQ(picture(accented, 2, {.accent = tinted.accent}), picture(accented, 2));
}

/// By the definition in WCAG 2.2.
double contrast(const Pixel& a, const Pixel& b) {
    const auto luminance = [](const Pixel& p) {
        const auto linear = [](int c) {
            return c <= 10 ? c / 255.0 / 12.92 : std::pow((c / 255.0 + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(p[0]) + 0.7152 * linear(p[1]) + 0.0722 * linear(p[2]) + 0.05;
    };
    return std::max(luminance(a), luminance(b)) / std::min(luminance(a), luminance(b));
}

TEST_F(AppearanceTest, EverythingStandsOutInHighContrast) {
    // Eight bits are a little off what was computed.
    constexpr double forTexts = 4.45;
    constexpr double forShapes = 2.95;
    std::vector<Appearance> appearances;
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        const Appearance high{.scheme = scheme, .contrast = Contrast::high};
        appearances.insert(appearances.end(), 5, high);
        appearances.end()[-4].mode = DrawingMode::vibrant;
        for (int i = 1; i <= 3; ++i) {
            appearances.end()[-i].mode = DrawingMode::tinted;
        }
        appearances.end()[-1].accent = Rgba{0.1, 0, 0.3};
        appearances.end()[-2].accent = Rgba{1, 0.95, 0.6};
    }
    for (const Appearance& appearance : appearances) {
        const Pixel tile = picture(widget({}), 1, appearance).at(85, 85);
        const auto strongest = [&](LayoutItem item) {
            const Picture drawn = picture(std::move(item), 3, appearance);
            double best = 0;
            for (int y = 120; y < 180; ++y) {
                for (int x = 120; x < 180; ++x) {
                    best = std::max(best, contrast(drawn.at(x, y), tile));
                }
            }
            return best;
        };
        EXPECT_EQ(tile[3], 255);
        for (const double scale : {1.0, 1.25, 2.0}) {
            const Picture drawn = picture({.content = DividerItem{}, .frame = {20, 100, 100, 1}}, scale, appearance);
            EXPECT_GE(contrast(drawn.at(drawn.width / 2, 0), tile), forShapes);
            EXPECT_GE(contrast(drawn.at(drawn.width / 4, static_cast<int>(100 * scale)), tile), forShapes);
        }
        for (const bool accented : {false, true}) {
            for (const Color color :
                 {Color::red, Color::orange, Color::yellow, Color::green, Color::blue, Color::purple, Color::gray}) {
                const auto centre = [&](LayoutItem item) {
                    return picture(std::move(item), 2, appearance).at(100, 100);
                };
                EXPECT_GE(contrast(centre(circleAt({45, 45, 10, 10}, color, accented)), tile), forShapes);
                const LayoutItem capsule{
                    .content = CapsuleItem{color}, .frame = {40, 40, 30, 20}, .accented = accented};
                EXPECT_GE(contrast(centre(capsule), {255, 255, 255, 255}), forTexts);
                LayoutItem text = textAt(renderer, {40, 40}, "HI", platform::largeTitle, color);
                text.accented = accented;
                EXPECT_GE(strongest(text), forTexts);
            }
            for (const auto& level : {platform::primary, platform::secondary, platform::tertiary}) {
                LayoutItem symbol = symbolAt({40, 40, 20, 20}, level);
                symbol.accented = accented;
                EXPECT_GE(strongest(symbol), forTexts);
            }
        }
    }
}

TEST_F(AppearanceTest, HighContrastLeavesWhatStandsOutAlready) {
    const Appearance high{.contrast = Contrast::high};
    // The palette's own colours.
    EXPECT_EQ(picture(circleAt({45, 45, 10, 10}, Color::blue), 2, high).at(100, 100), (Pixel{0, 0x7A, 0xFF, 255}));
    const Appearance darkHigh{.scheme = ColorScheme::dark, .contrast = Contrast::high};
    EXPECT_EQ(picture(circleAt({45, 45, 10, 10}, Color::yellow), 2, darkHigh).at(100, 100),
              (Pixel{0xFF, 0xD6, 0x0A, 255}));
}

} // namespace
} // namespace host
