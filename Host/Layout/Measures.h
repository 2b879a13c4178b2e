// The measures of the widgets: family sizes, margins, the text styles' sizes and line heights. Points.
#pragma once

#include "Host/Layout/Geometry.h"
#include "Platform/Views/Style.h"

#include <string_view>

namespace host {

inline constexpr double contentMargin = 12;
inline constexpr double cornerRadius = 20;
inline constexpr double defaultSpacing = 8;
inline constexpr double defaultSpacerLength = 8;
inline constexpr double labelSpacing = 4;
/// The part of a label's symbol below the baseline, so that its middle is that of the capitals beside it.
inline constexpr double labelSymbolDescent = .14;
inline constexpr double dividerThickness = 1;

/// Returns the size of a family by the protocol's name; that of medium for an unknown family.
Size familySize(std::string_view family);

/// CSS-like weights: 400 regular, 500 medium, 600 semibold, 700 bold.
struct TextMeasures {
    double size = 0;
    double lineHeight = 0;
    int weight = 400;
};
TextMeasures textMeasures(platform::Font font);

} // namespace host
