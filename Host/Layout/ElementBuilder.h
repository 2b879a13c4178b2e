// Makes the boxes of a view tree, and applies what views inherit.
//
// A view inherits font and foreground from the views around it; the defaults are callout and primary. Dividers and
// spacers follow the axis of the innermost stack around them; the default is vertical. An image that cannot be decoded
// becomes its fallback. Views nested deeper than `maxNesting` take no room.
#pragma once

#include "Host/Layout/Elements.h"
#include "Platform/Views/View.h"

namespace host {

inline constexpr int maxNesting = 256;

/// All arguments must outlive the element.
ElementPtr buildElement(const platform::View& view, TextMeasurer& texts, ImageMeasurer& images);

} // namespace host
