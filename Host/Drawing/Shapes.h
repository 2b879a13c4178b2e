// Helpers for cairo: colours and round corners.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Host/Layout/Geometry.h"

#include <cairo.h>

namespace host {

void setSource(cairo_t* cairo, const Rgba& color);

/// Adds to the path a rectangle with round corners of at most half its shorter side.
void addRoundedRect(cairo_t* cairo, const Rect& rect, double radius);

/// Turns every pixel of a premultiplied 32-bit surface into the gray of its luminance. Keeps its alpha.
void desaturate(cairo_surface_t* surface);

} // namespace host
