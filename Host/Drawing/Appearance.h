// How a widget is to look: what the desktop and the user chose, and the colours that follow from it.
#pragma once

#include <optional>

namespace host {

enum class ColorScheme { light, dark };
/// Tinted: grays, with the accent group in one tint. Vibrant: stronger text and muted colours, for a background that
/// shows through. What exactly becomes of each colour is said in Palette.h.
enum class DrawingMode { fullColor, tinted, vibrant };
/// Whether the compositor blurs what shows through the tile. Files of pictures have no compositor, so they are made for
/// a sharp one.
enum class Wallpaper { sharp, blurred };
/// High: for those who see little. The tile is opaque, and everything on it stands out from it.
enum class Contrast { normal, high };
/// Placeholder: texts, images and symbols as round blocks where they would stand, shapes softened, dividers as ever;
/// two texts of equal width look the same.
enum class Redaction { none, placeholder };

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
    /// The desktop's accent colour, for the tinted mode; left out, the palette's blue. Its alpha counts as 1.
    std::optional<Rgba> accent;
    friend bool operator==(const Appearance&, const Appearance&) = default;
};

} // namespace host
