#include "Host/Drawing/Palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace host {
namespace {

constexpr Rgba hex(std::uint32_t rgb, double alpha = 1) {
    return {static_cast<double>(rgb >> 16 & 0xff) / 255, static_cast<double>(rgb >> 8 & 0xff) / 255,
            static_cast<double>(rgb & 0xff) / 255, alpha};
}

struct Pair {
    Rgba light;
    Rgba dark;
    const Rgba& of(ColorScheme scheme) const { return scheme == ColorScheme::light ? light : dark; }
};

constexpr std::array<Pair, 9> namedColors{{
    {hex(0xFF3B30), hex(0xFF453A)},       // red
    {hex(0xFF9500), hex(0xFF9F0A)},       // orange
    {hex(0xFFCC00), hex(0xFFD60A)},       // yellow
    {hex(0x28CD41), hex(0x32D74B)},       // green
    {hex(0x007AFF), hex(0x0A84FF)},       // blue
    {hex(0xAF52DE), hex(0xBF5AF2)},       // purple
    {hex(0x8E8E93), hex(0x98989D)},       // gray
    {hex(0xFFFFFF), hex(0xFFFFFF)},       // white
    {hex(0x000000, 0), hex(0x000000, 0)}, // clear
}};
static_assert(namedColors.size() == platform::styleNames<platform::Color>.size());

constexpr std::array<Pair, 3> levels{{
    {hex(0x000000, 0.88), hex(0xFFFFFF, 0.92)}, // primary
    {hex(0x000000, 0.64), hex(0xFFFFFF, 0.66)}, // secondary
    {hex(0x000000, 0.56), hex(0xFFFFFF, 0.52)}, // tertiary
}};
constexpr std::array<Pair, 3> vibrantLevels{{
    {hex(0x000000, 0.98), hex(0xFFFFFF, 1.00)},
    {hex(0x000000, 0.76), hex(0xFFFFFF, 0.78)},
    {hex(0x000000, 0.65), hex(0xFFFFFF, 0.64)},
}};

constexpr std::array<Pair, 3> highLevels{{
    {hex(0x000000, 1.00), hex(0xFFFFFF, 1.00)},
    {hex(0x000000, 0.85), hex(0xFFFFFF, 0.85)},
    {hex(0x000000, 0.75), hex(0xFFFFFF, 0.75)},
}};

constexpr Pair dividers{hex(0x000000, 0.10), hex(0xFFFFFF, 0.10)};
constexpr Pair tiles{hex(0xFCFCFD), hex(0x202023)};
constexpr double sharpAlpha = 0.98;
constexpr double sharpVibrantAlpha = 0.95;
constexpr double blurredAlpha = 0.90;
constexpr Pair badgeGrounds{hex(0xF1F1F4), hex(0x48484D)};
constexpr Pair tileEdges{hex(0x000000, 0.10), hex(0xFFFFFF, 0.14)};
constexpr double edgeThickness = 0.5;

constexpr Pair wideShadows{hex(0x000000, 0.22), hex(0x000000, 0.36)};
constexpr Pair tightShadows{hex(0x000000, 0.20), hex(0x000000, 0.34)};
constexpr double wideDrop = 4;
constexpr double wideReach = 16;
constexpr double tightDrop = 1;
constexpr double tightReach = 2.5;

constexpr Pair hovers{hex(0x000000, 0.06), hex(0xFFFFFF, 0.08)};
constexpr Pair presses{hex(0x000000, 0.13), hex(0xFFFFFF, 0.16)};
constexpr Pair highHovers{hex(0x000000, 0.12), hex(0xFFFFFF, 0.18)};
constexpr Pair highPresses{hex(0x000000, 0.24), hex(0xFFFFFF, 0.32)};

constexpr Pair highTiles{hex(0xFFFFFF), hex(0x161618)};
constexpr Pair highLines{hex(0x000000, 0.55), hex(0xFFFFFF, 0.55)};
constexpr double highEdgeThickness = 1;

constexpr double textContrast = 4.5;
constexpr double shapeContrast = 3;

constexpr Rgba white = hex(0xFFFFFF);
constexpr Rgba black = hex(0x000000);

Rgba over(const Rgba& top, const Rgba& bottom) {
    const double below = bottom.alpha * (1 - top.alpha);
    const double alpha = top.alpha + below;
    const auto mixed = [&](double t, double b) { return (t * top.alpha + b * below) / alpha; };
    return {mixed(top.red, bottom.red), mixed(top.green, bottom.green), mixed(top.blue, bottom.blue), alpha};
}

Rgba mixed(const Rgba& color, const Rgba& other, double share) {
    const auto between = [&](double from, double to) { return from + (to - from) * share; };
    return {between(color.red, other.red), between(color.green, other.green), between(color.blue, other.blue),
            color.alpha};
}

Rgba towardsGray(const Rgba& color, double share) {
    const double gray = grayOf(color);
    return mixed(color, {gray, gray, gray}, share);
}

double luminanceOf(const Rgba& color) {
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

/// Mixes as much of `other` into `color` as the contrast to `ground` requires.
Rgba mixedUntil(const Rgba& color, const Rgba& other, const Rgba& ground, double contrast) {
    if (contrastBetween(color, ground) >= contrast) {
        return color;
    }
    double tooLittle = 0;
    double enough = 1;
    for (int i = 0; i < 10; ++i) {
        const double share = (tooLittle + enough) / 2;
        (contrastBetween(mixed(color, other, share), ground) < contrast ? tooLittle : enough) = share;
    }
    return mixed(color, other, enough);
}

/// Returns whether modes and contrast change the colour.
bool isAdaptable(platform::Color color) {
    return color != platform::Color::white && color != platform::Color::clear;
}

} // namespace

double grayOf(const Rgba& color) {
    const double luminance = luminanceOf(color);
    return luminance <= 0.0031308 ? luminance * 12.92 : 1.055 * std::pow(luminance, 1 / 2.4) - 0.055;
}

double contrastBetween(const Rgba& a, const Rgba& b) {
    const auto [darker, lighter] = std::minmax({luminanceOf(a), luminanceOf(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

Rgba Palette::level(platform::ForegroundLevel level) const {
    const auto& table = isHigh() ? highLevels : appearance_.mode == DrawingMode::vibrant ? vibrantLevels : levels;
    return table[static_cast<std::size_t>(level)].of(appearance_.scheme);
}

Rgba Palette::named(platform::Color color) const {
    return namedColors[static_cast<std::size_t>(color)].of(appearance_.scheme);
}

Rgba Palette::tint() const {
    Rgba tint = appearance_.accent.value_or(named(platform::Color::blue));
    tint.alpha = 1;
    return standingOut(tint, shapeContrast);
}

Rgba Palette::plain(platform::Color color, Group group) const {
    if (appearance_.mode == DrawingMode::fullColor || !isAdaptable(color)) {
        return named(color);
    }
    if (appearance_.mode == DrawingMode::vibrant) {
        return towardsGray(named(color), 0.5);
    }
    return group == Group::accent ? tint() : towardsGray(named(color), 1);
}

Rgba Palette::standingOut(const Rgba& color, double contrast) const {
    const Rgba& away = appearance_.scheme == ColorScheme::light ? black : white;
    return mixedUntil(color, away, tile(), contrast);
}

Rgba Palette::foreground(const platform::Foreground& foreground, Group group) const {
    if (const auto* named = std::get_if<platform::Color>(&foreground)) {
        const Rgba color = plain(*named, group);
        return isHigh() && isAdaptable(*named) ? standingOut(color, textContrast) : color;
    }
    const Rgba untinted = level(std::get<platform::ForegroundLevel>(foreground));
    if (appearance_.mode != DrawingMode::tinted || group == Group::plain) {
        return untinted;
    }
    Rgba tinted = tint();
    tinted.alpha = untinted.alpha;
    return isHigh() ? standingOut(over(tinted, tile()), textContrast) : tinted;
}

Rgba Palette::shape(platform::Color color, Group group) const {
    return isHigh() && isAdaptable(color) ? standingOut(plain(color, group), shapeContrast) : plain(color, group);
}

Rgba Palette::ground(platform::Color color, Group group) const {
    // A ground that is just dark enough for white is light enough for black, too.
    return isHigh() && isAdaptable(color) ? mixedUntil(plain(color, group), black, white, textContrast)
                                          : plain(color, group);
}

Rgba Palette::divider() const {
    return (isHigh() ? highLines : dividers).of(appearance_.scheme);
}

Rgba Palette::tile() const {
    if (isHigh()) {
        return highTiles.of(appearance_.scheme);
    }
    Rgba tile = tiles.of(appearance_.scheme);
    tile.alpha = appearance_.wallpaper == Wallpaper::blurred ? blurredAlpha
                 : appearance_.mode == DrawingMode::vibrant  ? sharpVibrantAlpha
                                                             : sharpAlpha;
    return tile;
}

Rgba Palette::badge() const {
    return isHigh() ? tile() : badgeGrounds.of(appearance_.scheme);
}

Palette::Edge Palette::tileEdge() const {
    return isHigh() ? Edge{highEdgeThickness, highLines.of(appearance_.scheme)}
                    : Edge{edgeThickness, tileEdges.of(appearance_.scheme)};
}

std::array<Palette::Shadow, 2> Palette::shadows() const {
    return {{{wideDrop, wideReach, wideShadows.of(appearance_.scheme)},
             {tightDrop, tightReach, tightShadows.of(appearance_.scheme)}}};
}

Rgba Palette::highlight(Highlight highlight) const {
    const bool isHovered = highlight == Highlight::hovered;
    const Pair& pair = isHigh() ? (isHovered ? highHovers : highPresses) : (isHovered ? hovers : presses);
    return pair.of(appearance_.scheme);
}

Rgba Palette::focusRing() const {
    return tint();
}

Rgba Palette::redacted(Rgba color) {
    color.alpha *= 0.2;
    return color;
}

} // namespace host
