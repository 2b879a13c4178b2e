// Collects what placed boxes draw, in drawing order.
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
struct InheritedStyle {
    platform::Font font = platform::callout;
    platform::Foreground foreground = platform::primary;
    bool accented = false;
};

struct LayoutBuilder {
    WidgetLayout& layout;
    /// The link that everything now added lies in.
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

} // namespace host
