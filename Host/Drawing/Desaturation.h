// Pictures in grays, for the modes with one colour.
#pragma once

#include <cairo.h>

namespace host {

enum class Tone { color, gray };

/// Turns every pixel of a premultiplied 32-bit surface into the gray of its luminance. Keeps its alpha.
void desaturate(cairo_surface_t* surface);

} // namespace host
