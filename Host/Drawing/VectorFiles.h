// Pictures as SVG and PDF files, in points.
#pragma once

#include "Host/Layout/Geometry.h"

#include <cairo.h>
#include <functional>
#include <string>

namespace host {

enum class VectorFormat { svg, pdf };

/// `draw` draws the page. Returns the file's bytes, the same for the same drawing; empty on failure.
std::string vectorFile(VectorFormat format, Size size, const std::function<void(cairo_t*)>& draw);

} // namespace host
