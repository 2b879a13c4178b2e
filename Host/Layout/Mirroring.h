// Layouts for those who read from right to left.
#pragma once

#include "Host/Layout/WidgetLayout.h"

namespace host {

/// Where the leading edge is: left, or right.
enum class Direction { leftToRight, rightToLeft };

/// Turns a finished layout about: what stood at the left stands at the right. Texts keep to their side of the layout,
/// whatever script they are in; what is drawn (letters, symbols, images) is not turned itself.
void mirror(WidgetLayout& layout);

} // namespace host
