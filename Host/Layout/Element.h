// A box of the layout: what a view is while it is laid out.
//
// A parent offers a size, the child answers with the size that it takes, and the parent places it there. Offers are
// never negative. A length of an offer may be infinite, "as large as you like", and so may then be the answer. A child
// may take more than it was offered. The same offer always gets the same answer; asking again is cheap.
//
// One layout, one thread.
#pragma once

#include "Host/Layout/Geometry.h"
#include "Host/Layout/Placement.h"

#include <limits>
#include <optional>

namespace host {

inline constexpr double infinity = std::numeric_limits<double>::infinity();

enum class Axis { horizontal, vertical };

constexpr Axis other(Axis axis) {
    return axis == Axis::horizontal ? Axis::vertical : Axis::horizontal;
}
constexpr double along(Axis axis, Size size) {
    return axis == Axis::horizontal ? size.width : size.height;
}
constexpr Size sized(Axis axis, double along, double across) {
    return axis == Axis::horizontal ? Size{along, across} : Size{across, along};
}

struct Answer {
    Size size;
    /// From the upper edge to the first line of text's baseline, where there is text.
    std::optional<double> baseline;
};

/// What a stack treats in a way of its own.
enum class Role { content, spacer, divider };

class Element {
  public:
    virtual ~Element() = default;

    virtual Answer measure(Size offer) = 0;

    /// The largest length along `axis` less the smallest: the answers to an infinite offer and to one of nothing.
    /// Across it, `offer` holds.
    virtual double flexibility(Axis axis, Size offer);

    virtual Role role() const { return Role::content; }

    /// Adds what this draws when it is offered `offer` and its upper left corner stands at `origin`. The offer is
    /// finite.
    virtual void place(Point origin, Size offer, Placement& placement) = 0;
};

} // namespace host
