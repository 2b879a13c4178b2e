// Pictures as SVG and PDF files, in points; whoever draws on the given cairo draws the page.
#pragma once

#include "Host/Layout/Geometry.h"

#include <cairo.h>
#include <functional>
#include <string>

namespace host {

enum class VectorFormat { svg, pdf };

/// The file's bytes, the same for the same drawing. Empty if it could not be made.
std::string vectorFile(VectorFormat format, Size size, const std::function<void(cairo_t*)>& draw);

} // namespace host
