// Where placed boxes put what they draw: the layout that is being made, in drawing order.
//
// Lengths run from the leading edge to the right. A desktop that is read from right to left would mirror the finished
// layout as a whole, not the boxes one by one.
#pragma once

#include "Host/Layout/WidgetLayout.h"
#include "Platform/Views/Style.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace host {

/// What a view inherits from those around it.
struct Look {
    platform::Font font = platform::callout;
    platform::Foreground foreground = platform::primary;
    bool accented = false;
};

struct Placement {
    WidgetLayout& layout;
    /// The link that everything now added lies in.
    std::optional<std::size_t> link;

    template <class Content>
    void add(Content content, Point origin, Size size, const Look& look) {
        layout.items.push_back({.content = std::move(content),
                                .frame = {origin.x, origin.y, size.width, size.height},
                                .font = look.font,
                                .foreground = look.foreground,
                                .accented = look.accented,
                                .link = link});
    }
};

} // namespace host
