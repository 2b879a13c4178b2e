// How a widget is to look: what the desktop and the user chose, and the colours that follow from it.
#pragma once

#include "Platform/Views/Style.h"

namespace host {

enum class ColorScheme { light, dark };
enum class DrawingMode { fullColor, tinted, vibrant };
enum class Redaction { none, placeholder };

struct Appearance {
    ColorScheme scheme = ColorScheme::light;
    DrawingMode mode = DrawingMode::fullColor;
    Redaction redaction = Redaction::none;
};

/// Components from 0 to 1, not premultiplied.
struct Rgba {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
};

} // namespace host
