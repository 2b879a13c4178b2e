#include "Host/Drawing/Palette.h"

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
    {hex(0x000000, 0.60), hex(0xFFFFFF, 0.62)}, // secondary
    {hex(0x000000, 0.46), hex(0xFFFFFF, 0.46)}, // tertiary
}};
constexpr std::array<Pair, 3> vibrantLevels{{
    {hex(0x000000, 0.98), hex(0xFFFFFF, 1.00)},
    {hex(0x000000, 0.72), hex(0xFFFFFF, 0.74)},
    {hex(0x000000, 0.58), hex(0xFFFFFF, 0.58)},
}};

constexpr Pair dividers{hex(0x000000, 0.10), hex(0xFFFFFF, 0.10)};
constexpr Pair tileBackgrounds{hex(0xF6F6F8, 0.86), hex(0x26262A, 0.86)};
constexpr Pair tertiaryFills{hex(0x000000, 0.04), hex(0xFFFFFF, 0.05)};
constexpr Pair tileEdges{hex(0x000000, 0.08), hex(0xFFFFFF, 0.12)};

Rgba over(const Rgba& top, const Rgba& bottom) {
    const double below = bottom.alpha * (1 - top.alpha);
    const double alpha = top.alpha + below;
    const auto mixed = [&](double t, double b) { return (t * top.alpha + b * below) / alpha; };
    return {mixed(top.red, bottom.red), mixed(top.green, bottom.green), mixed(top.blue, bottom.blue), alpha};
}

Rgba towardsGray(const Rgba& color, double share) {
    const double gray = grayOf(color);
    const auto mixed = [&](double component) { return component + (gray - component) * share; };
    return {mixed(color.red), mixed(color.green), mixed(color.blue), color.alpha};
}

} // namespace

double grayOf(const Rgba& color) {
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    const double luminance = 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
    return luminance <= 0.0031308 ? luminance * 12.92 : 1.055 * std::pow(luminance, 1 / 2.4) - 0.055;
}

Rgba Palette::level(platform::ForegroundLevel level) const {
    const auto& table = appearance_.mode == DrawingMode::vibrant ? vibrantLevels : levels;
    return table[static_cast<std::size_t>(level)].of(appearance_.scheme);
}

Rgba Palette::named(platform::Color color) const {
    return namedColors[static_cast<std::size_t>(color)].of(appearance_.scheme);
}

Rgba Palette::foreground(const platform::Foreground& foreground, Group group) const {
    if (const auto* named = std::get_if<platform::Color>(&foreground)) {
        return color(*named, group);
    }
    const Rgba plain = level(std::get<platform::ForegroundLevel>(foreground));
    if (appearance_.mode != DrawingMode::tinted || group == Group::plain) {
        return plain;
    }
    Rgba tinted = named(platform::Color::blue);
    tinted.alpha = plain.alpha;
    return tinted;
}

Rgba Palette::color(platform::Color color, Group group) const {
    const bool takesPart = color != platform::Color::white && color != platform::Color::clear;
    if (appearance_.mode == DrawingMode::fullColor || !takesPart) {
        return named(color);
    }
    if (appearance_.mode == DrawingMode::vibrant) {
        return towardsGray(named(color), 0.5);
    }
    return group == Group::accent ? named(platform::Color::blue) : towardsGray(named(color), 1);
}

Rgba Palette::divider() const {
    return dividers.of(appearance_.scheme);
}

Rgba Palette::tile() const {
    return over(tertiaryFills.of(appearance_.scheme), tileBackgrounds.of(appearance_.scheme));
}

Rgba Palette::tileEdge() const {
    return tileEdges.of(appearance_.scheme);
}

Rgba Palette::redacted(Rgba color) {
    color.alpha *= 0.2;
    return color;
}

} // namespace host
