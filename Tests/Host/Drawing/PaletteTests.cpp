#include "Host/Drawing/Palette.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace host {
namespace {

using platform::Color;

constexpr std::array colors{Color::red,  Color::orange, Color::yellow, Color::green,
                            Color::blue, Color::purple, Color::gray};
constexpr std::array levels{platform::primary, platform::secondary, platform::tertiary};

/// `top` drawn on an opaque colour.
Rgba onto(const Rgba& top, const Rgba& ground) {
    const auto mixed = [&](double a, double b) { return a * top.alpha + b * (1 - top.alpha); };
    return {mixed(top.red, ground.red), mixed(top.green, ground.green), mixed(top.blue, ground.blue), 1};
}

/// By the definition in WCAG 2.2.
double contrast(const Rgba& a, const Rgba& b) {
    const auto luminance = [](const Rgba& c) {
        const auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear(c.red) + 0.7152 * linear(c.green) + 0.0722 * linear(c.blue) + 0.05;
    };
    return std::max(luminance(a), luminance(b)) / std::min(luminance(a), luminance(b));
}

std::vector<Appearance> appearances(Contrast contrast) {
    std::vector<Appearance> all;
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        for (const Wallpaper wallpaper : {Wallpaper::sharp, Wallpaper::blurred}) {
            const auto add = [&](DrawingMode mode, std::optional<Rgba> accent = std::nullopt) {
                all.push_back(
                    {.scheme = scheme, .mode = mode, .wallpaper = wallpaper, .contrast = contrast, .accent = accent});
            };
            add(DrawingMode::fullColor);
            add(DrawingMode::vibrant);
            add(DrawingMode::tinted);
            add(DrawingMode::tinted, Rgba{0.1, 0, 0.3});
            add(DrawingMode::tinted, Rgba{1, 0.95, 0.6});
        }
    }
    return all;
}

TEST(Palette, EverythingStandsOutInHighContrast) {
    constexpr double forTexts = 4.499;
    constexpr double forShapes = 2.999;
    for (const Appearance& appearance : appearances(Contrast::high)) {
        const Palette palette(appearance);
        const Rgba tile = palette.tile();
        EXPECT_EQ(tile.alpha, 1);
        EXPECT_GE(contrast(onto(palette.divider(), tile), tile), forShapes);
        EXPECT_GE(contrast(onto(palette.tileEdge().color, tile), tile), forShapes);
        for (const Group group : {Group::plain, Group::accent}) {
            for (const Color color : colors) {
                EXPECT_GE(contrast(onto(palette.shape(color, group), tile), tile), forShapes);
                EXPECT_GE(contrast(onto(palette.ground(color, group), tile), {1, 1, 1}), forTexts);
                EXPECT_GE(contrast(onto(palette.foreground(color, group), tile), tile), forTexts);
            }
            for (const auto& level : levels) {
                EXPECT_GE(contrast(onto(palette.foreground(level, group), tile), tile), forTexts);
            }
        }
    }
}

TEST(Palette, TextsAreReadableOnEveryWallpaper) {
    constexpr std::array minContrasts{10.0, 6.0, 4.5};
    constexpr Rgba black{0, 0, 0};
    constexpr Rgba white{1, 1, 1};
    // What lies under a letter, and beside it: no photograph is worse than black and white side by side.
    constexpr std::array<std::pair<Rgba, Rgba>, 4> wallpapers{
        {{black, black}, {white, white}, {black, white}, {white, black}}};
    for (const Appearance& appearance : appearances(Contrast::normal)) {
        const Palette palette(appearance);
        for (std::size_t number = 0; number < (appearance.wallpaper == Wallpaper::blurred ? 2 : 4); ++number) {
            const auto& [under, beside] = wallpapers.at(number);
            for (std::size_t i = 0; i < levels.size(); ++i) {
                const Rgba text = palette.foreground(levels.at(i), Group::plain);
                EXPECT_GE(contrast(onto(text, onto(palette.tile(), under)), onto(palette.tile(), beside)),
                          minContrasts.at(i))
                    << static_cast<int>(appearance.mode) << static_cast<int>(appearance.scheme) << number;
            }
        }
        EXPECT_GE(contrast(palette.focusRing(), onto(palette.tile(), {0.5, 0.5, 0.5})), 2.6);
    }
    // Tiles keep their shade on the opposite.
    EXPECT_GT(onto(Palette({}).tile(), black).red, 0.95);
    EXPECT_LT(onto(Palette({.scheme = ColorScheme::dark}).tile(), white).red, 0.16);
}

} // namespace
} // namespace host
