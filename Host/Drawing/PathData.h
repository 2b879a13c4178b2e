// Outlines in the path data language of SVG (the `d` of a <path>), as far as the symbols use it: the absolute commands
// M L H V A C Q S Z, each written out, with blanks between all letters and numbers. Arcs have unturned axes.
#pragma once

#include <cairo.h>
#include <string_view>

namespace host {

/// Adds the outline to the current path. Returns false if the data is malformed; what came before that is added.
bool addPathData(cairo_t* cairo, std::string_view data);

} // namespace host
