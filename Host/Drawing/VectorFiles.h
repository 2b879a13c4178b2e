// Pictures as SVG and PDF files, in points.
#pragma once

#include "Host/Layout/Geometry.h"

#include <cairo.h>
#include <functional>
#include <string>

namespace host {

enum class VectorFormat { svg, pdf };

/// `draw` draws the page on the cairo that it gets. Returns the file's bytes, the same for the same drawing; empty if
/// it could not be made.
std::string vectorFile(VectorFormat format, Size size, const std::function<void(cairo_t*)>& draw);

} // namespace host
