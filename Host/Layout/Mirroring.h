// Layouts for reading from right to left.
#pragma once

#include "Host/Layout/WidgetLayout.h"

namespace host {

/// The reading direction.
enum class Direction { leftToRight, rightToLeft };

/// Mirrors the frames and text alignments of a finished layout. Letters, symbols and images are not mirrored
/// themselves.
void mirror(WidgetLayout& layout);

} // namespace host
