// What is on a widget, for those who cannot see it and for those who go from link to link by keys.
#pragma once

#include "Host/Layout/WidgetLayout.h"

#include <cstddef>
#include <string>
#include <vector>

namespace host {

/// Something on a widget that has a name.
struct AccessibleItem {
    enum class Role { heading, text, link };
    Role role = Role::text;
    /// In points.
    Rect frame;
    /// Never empty.
    std::string name;
    /// May be empty.
    std::string description;
    /// Of a link, else empty.
    std::string url;
    friend bool operator==(const AccessibleItem&, const AccessibleItem&) = default;
};

/// Bytes of an item's name, and of its description. What is longer is cut between characters.
inline constexpr std::size_t maxItemText = 2048;

/// In reading order.
///
/// A link is named by its first text and described by its other ones, joined by ", "; one without texts is named by its
/// URL. Where links lie in each other, a text belongs to the innermost.
///
/// Of the texts in no link, those in a style for titles (headline, title3, largeTitle) are headings, described by the
/// texts that follow in the same row, such as a count.
std::vector<AccessibleItem> accessibleItems(const WidgetLayout& layout);

} // namespace host
