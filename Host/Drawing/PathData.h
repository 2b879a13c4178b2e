// Outlines in the path data language of SVG (the `d` of a <path>), in a subset: the absolute commands
// M L H V A C Z, none left out, with blanks between all letters and numbers. Arcs have no rotation.
#pragma once

#include <cairo.h>
#include <string_view>

namespace host {

/// Adds the outline to the current path. Returns false if the data is malformed, after adding what comes before.
bool addPathData(cairo_t* cairo, std::string_view data);

} // namespace host
