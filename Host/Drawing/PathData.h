// Outlines in the path data language of SVG (the `d` of a <path>): all commands, M L H V C S Q T A Z, absolute and
// relative, with numbers as SVG 1.1 writes them (`.5-.5`, `1e-3`, arc flags run together as in `0 01`).
#pragma once

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "Host/Layout/Geometry.h"

namespace host {

struct MoveTo {
    Point to;
    friend bool operator==(const MoveTo&, const MoveTo&) = default;
};
struct LineTo {
    Point to;
    friend bool operator==(const LineTo&, const LineTo&) = default;
};
/// A cubic Bézier curve; quadratic curves and arcs are turned into these.
struct CurveTo {
    Point control1;
    Point control2;
    Point to;
    friend bool operator==(const CurveTo&, const CurveTo&) = default;
};
struct ClosePath {
    friend bool operator==(const ClosePath&, const ClosePath&) = default;
};

using PathSegment = std::variant<MoveTo, LineTo, CurveTo, ClosePath>;
using Path = std::vector<PathSegment>;

/// The path in absolute coordinates; nothing if any of the text is malformed. Empty text is an empty path.
std::optional<Path> parsePathData(std::string_view data);

} // namespace host
