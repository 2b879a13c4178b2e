// Draws symbols, and caches their masks. Draws a name without artwork as a dashed square. One thread at a time.
#pragma once

#include "Host/Drawing/Handles.h"

#include <map>
#include <string_view>
#include <utility>

namespace host {

class SymbolSet {
  public:
    /// Strokes the symbol with the current source, `size` units square, with its upper left corner at the origin.
    void stroke(cairo_t* cairo, std::string_view name, double size) const;

    /// Returns the symbol's coverage, alpha only, `size` pixels square and `maskMargin` more on each side. Valid as
    /// long as this.
    cairo_surface_t* mask(std::string_view name, int size);
    static constexpr int maskMargin = 1;

  private:
    /// By the name in the static table, and the size.
    std::map<std::pair<std::string_view, int>, SurfaceHandle> masks_;
};

} // namespace host
