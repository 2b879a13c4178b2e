// The texts and links of a widget, for accessibility and keyboard focus.
#pragma once

#include "Host/Layout/WidgetLayout.h"

#include <cstddef>
#include <string>
#include <vector>

namespace host {

/// A named part of a widget.
struct AccessibleItem {
    enum class Role { heading, text, link };
    Role role = Role::text;
    /// In points.
    Rect frame;
    /// Never empty.
    std::string name;
    /// May be empty.
    std::string description;
    /// Empty unless it is a link.
    std::string url;
    friend bool operator==(const AccessibleItem&, const AccessibleItem&) = default;
};

/// The maximum of bytes in an item's name, and in its description. Longer ones are cut between characters.
inline constexpr std::size_t maxItemText = 2048;

/// Returns the items in reading order.
///
/// The first text of a link is its name, the others are its description, joined by ", ". A link without texts is named
/// by its URL. If links are nested, a text belongs to the innermost.
///
/// A text outside links is a heading if it has a title style (headline, title3, largeTitle). The texts that follow in
/// the same row, such as a count, are its description.
std::vector<AccessibleItem> accessibleItems(const WidgetLayout& layout);

} // namespace host
