// Makes the boxes of a view tree: what views inherit from those around them is handed down here.
//
// Font and foreground hold until a view below sets its own; callout and primary where none does. Dividers and spacers
// go by the innermost stack around them, downwards where there is none. An image that cannot be decoded becomes its
// fallback. Views nested deeper than `deepestNesting` take no room.
#pragma once

#include "Host/Layout/Elements.h"
#include "Platform/Views/View.h"

namespace host {

inline constexpr int deepestNesting = 256;

/// All arguments must outlive the element.
ElementPtr buildElement(const platform::View& view, TextMeasurer& texts, ImageMeasurer& images);

} // namespace host
