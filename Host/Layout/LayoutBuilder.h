// Collects what placed boxes draw, in drawing order.
//
// The leading edge is the left one. For reading from right to left, the finished layout is mirrored (Mirroring.h).
#pragma once

#include "Host/Layout/WidgetLayout.h"
#include "Platform/Views/Style.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace host {

/// What a view inherits from the views around it.
struct InheritedStyle {
    platform::Font font = platform::callout;
    platform::Foreground foreground = platform::primary;
    bool accented = false;
};

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

} // namespace host
