// Pictures as PNG files: eight bits per channel with alpha, sRGB. Fast rather than small: no row filters, the lowest
// compression.
#pragma once

#include "Host/Drawing/PixelBuffer.h"

#include <string>

namespace host {

/// Returns the file's bytes; empty if there are no pixels.
std::string pngFile(const PixelBuffer& picture);

} // namespace host
