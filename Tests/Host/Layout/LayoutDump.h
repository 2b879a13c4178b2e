// A layout as text: a line per item, in drawing order, then the links.
//
//     text 30,15 84x15 "Getting Started" secondary link 0
//
// Position and size in points; font, foreground and alignment only where they are not callout, primary and leading.
#pragma once

#include "Host/Layout/WidgetLayout.h"

#include <string>

namespace host {

/// Positions are from `origin`.
std::string dump(const WidgetLayout& layout, Point origin = {});

} // namespace host
