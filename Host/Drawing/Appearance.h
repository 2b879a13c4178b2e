// How a widget is drawn, as the desktop and the user choose. Palette.h has the colours that follow from it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

namespace host {

enum class ColorScheme { light, dark };
/// Tinted: grays, with the accent group in one tint. Vibrant: stronger text and muted colours, for a background that
/// shows through.
enum class DrawingMode { fullColor, tinted, vibrant };
/// Whether the compositor blurs what shows through the tile. Picture files are made for a sharp wallpaper.
enum class Wallpaper { sharp, blurred };
/// High: the tile is opaque, and everything on it stands out from it.
enum class Contrast { normal, high };
/// Placeholder: texts, images and symbols as round blocks in their places, shapes softened, dividers unchanged.
enum class Redaction { none, placeholder };

/// The names in files and on command lines, in the order of the values.
inline constexpr std::array<std::string_view, 2> colorSchemeNames{"light", "dark"};
inline constexpr std::array<std::string_view, 3> drawingModeNames{"fullColor", "tinted", "vibrant"};
inline constexpr std::array<std::string_view, 2> contrastNames{"normal", "high"};

/// Returns nothing for another name.
template <class Value, std::size_t Count>
std::optional<Value> valueNamed(std::string_view name, const std::array<std::string_view, Count>& names) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? std::nullopt : std::optional(static_cast<Value>(std::distance(names.begin(), found)));
}

/// Components from 0 to 1, not premultiplied.
struct Rgba {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    friend bool operator==(const Rgba&, const Rgba&) = default;
};

struct Appearance {
    ColorScheme scheme = ColorScheme::light;
    DrawingMode mode = DrawingMode::fullColor;
    Wallpaper wallpaper = Wallpaper::sharp;
    Redaction redaction = Redaction::none;
    Contrast contrast = Contrast::normal;
    /// The desktop's accent colour, for the tinted mode and the focus ring; the palette's blue without one. Its alpha
    /// counts as 1.
    std::optional<Rgba> accent;
    friend bool operator==(const Appearance&, const Appearance&) = default;
};

} // namespace host
