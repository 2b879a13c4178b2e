// Converts points to device pixels. Each edge is rounded by its absolute position, so that neighbours that touch in
// points touch in pixels.
#pragma once

#include "Host/Layout/Geometry.h"

#include <algorithm>
#include <cmath>

namespace host {

class PixelGrid {
  public:
    explicit PixelGrid(double scale) : scale_(scale) {}

    /// Device pixels per point.
    double scale() const { return scale_; }

    /// Returns the pixel edge nearest to a position.
    double edge(double points) const { return std::floor(points * scale_ + 0.5); }

    /// Returns a length that does not depend on a position; at least one pixel.
    double length(double points) const { return std::max(1.0, std::floor(points * scale_ + 0.5)); }

    /// Returns the thickness of a line, rounded down, but at least one pixel.
    double thickness(double points) const { return std::max(1.0, std::floor(points * scale_ + 1e-6)); }

    /// Returns the frame in pixels, each side on a pixel edge.
    Rect rect(const Rect& points) const {
        const double x = edge(points.x);
        const double y = edge(points.y);
        return {x, y, edge(points.right()) - x, edge(points.bottom()) - y};
    }

    /// Returns a rectangle of whole pixels with that size in points, in the middle of `frame`.
    Rect centered(const Rect& frame, Size size) const {
        const double width = length(size.width);
        const double height = length(size.height);
        return {std::floor((frame.x + frame.width / 2) * scale_ - width / 2 + 0.5),
                std::floor((frame.y + frame.height / 2) * scale_ - height / 2 + 0.5), width, height};
    }

  private:
    double scale_;
};

} // namespace host
