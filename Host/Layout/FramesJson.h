// A layout as JSON.
//
// A list in drawing order. Each thing drawn is an object: `type` ("text", "symbol", "image", "circle", "background",
// "divider"), `x`, `y`, `width`, `height` (points from the widget's upper left corner, rounded to a thousandth), `text`
// as drawn (its lines joined by "\n", with the ellipsis where it was cut) or `symbol`, and `links`: those that it lies
// in, the innermost first, each an object with `url`, `x`, `y`, `width`, `height`.
#pragma once

#include "Host/Layout/WidgetLayout.h"

#include <string>

namespace host {

std::string framesJson(const WidgetLayout& layout);

} // namespace host
