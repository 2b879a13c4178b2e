// From points to device pixels: every edge is rounded once, from where it absolutely stands, so that neighbours that
// touch in points touch in pixels.
#pragma once

#include "Host/Layout/Geometry.h"

#include <algorithm>
#include <cmath>

namespace host {

class PixelGrid {
  public:
    explicit PixelGrid(double scale) : scale_(scale) {}

    /// Device pixels a point.
    double scale() const { return scale_; }

    /// The whole pixel edge nearest to a position.
    double edge(double points) const { return std::floor(points * scale_ + 0.5); }

    /// A length on its own, for what must not grow or shrink with where it stands; at least one pixel.
    double length(double points) const { return std::max(1.0, std::floor(points * scale_ + 0.5)); }

    /// The thickness of a line: never more than asked for, but at least one pixel.
    double thickness(double points) const { return std::max(1.0, std::floor(points * scale_ + 1e-6)); }

    /// In pixels, each side on a pixel edge.
    Rect rect(const Rect& points) const {
        const double x = edge(points.x);
        const double y = edge(points.y);
        return {x, y, edge(points.right()) - x, edge(points.bottom()) - y};
    }

    /// A rectangle of whole pixels of the given size in points, in the middle of `frame`.
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
