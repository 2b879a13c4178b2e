// A box of the layout: what a view is while it is laid out.
//
// A parent proposes a size, the child returns the size that it takes, and the parent places it there. Proposals are
// never negative. A length of a proposal may be infinite, "as large as you like", and then so may be the measurement. A
// child may take more than was proposed. Equal proposals give equal measurements; measuring again is cheap.
//
// One layout, one thread.
#pragma once

#include "Host/Layout/Geometry.h"
#include "Host/Layout/LayoutBuilder.h"

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

struct Measurement {
    Size size;
    /// From the upper edge to the first line of text's baseline, where there is text.
    std::optional<double> baseline;
};

/// What a stack treats in a way of its own.
enum class Role { content, spacer, divider };

class Element {
  public:
    virtual ~Element() = default;

    virtual Measurement measure(Size proposal) = 0;

    /// The largest length along `axis` less the smallest: what it measures for an infinite proposal and for none.
    /// Across the axis, `proposal` holds.
    virtual double flexibility(Axis axis, Size proposal);

    virtual Role role() const { return Role::content; }

    /// Adds what this draws for `proposal` when its upper left corner stands at `origin`. The proposal is
    /// finite.
    virtual void place(Point origin, Size proposal, LayoutBuilder& builder) = 0;
};

} // namespace host
