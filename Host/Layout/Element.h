// A box of the layout; each view of the tree becomes one.
//
// A parent proposes a size, the child returns the size that it takes, and the parent places it. Proposals are never
// negative. A length of a proposal may be infinite, which means "as large as you like"; the measurement may then be
// infinite, too. A child may take more than was proposed. Equal proposals give equal measurements; measuring again is
// cheap.
//
// One thread per layout.
#pragma once

#include "Host/Layout/WidgetLayout.h"
#include "Platform/Views/Style.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <utility>

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
    /// From the upper edge to the baseline of the first line of text; nothing without text.
    std::optional<double> baseline;
};

/// What a view inherits from the views around it.
struct InheritedStyle {
    platform::Font font = platform::callout;
    platform::Foreground foreground = platform::primary;
    bool accented = false;
};

/// Collects what placed boxes draw, in drawing order. The leading edge is the left one. For reading from right to left,
/// the finished layout is mirrored (Mirroring.h).
struct LayoutBuilder {
    WidgetLayout& layout;
    /// The link of the items that are added now.
    std::optional<std::size_t> link;

    template <class Content>
    void add(Content content, Point origin, Size size, const InheritedStyle& style) {
        layout.items.push_back({.content = std::move(content),
                                .frame = {origin.x, origin.y, size.width, size.height},
                                .font = style.font,
                                .foreground = style.foreground,
                                .accented = style.accented,
                                .link = link});
    }
};

/// How a stack treats the element.
enum class Role { content, spacer, divider };

class Element {
  public:
    virtual ~Element() = default;

    virtual Measurement measure(Size proposal) = 0;

    /// Returns the difference between the largest and the smallest length along `axis`: those for an infinite proposal
    /// and for 0. Uses `proposal` across the axis.
    virtual double flexibility(Axis axis, Size proposal) {
        const double across = along(other(axis), proposal);
        const double largest = along(axis, measure(sized(axis, infinity, across)).size);
        const double smallest = along(axis, measure(sized(axis, 0, across)).size);
        return largest - smallest;
    }

    virtual Role role() const { return Role::content; }

    /// Adds what this draws for `proposal`, with its upper left corner at `origin`. Requires a finite proposal.
    virtual void place(Point origin, Size proposal, LayoutBuilder& builder) = 0;
};

} // namespace host
