// The rows in which lists show an item, and what rows are made of.
//
// A row is dot, icon and text from leading to trailing; the families use larger rows as they have more room. An item
// without a dot keeps its place, so that texts stay aligned.
#pragma once

#include "Extension/Shared/DisplayableItem.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/View.h"
#include "Platform/Widgets/Environment.h"

#include <optional>
#include <string>
#include <string_view>

namespace foliovault {

/// The item's own picture in full colour, else its symbol; `size` points wide and high. A picture stored in more than
/// `greatestIconSize` bytes is no icon: sixteen of that size are what an answer to the host may hold.
struct ItemIconView {
    static constexpr std::size_t greatestIconSize = std::size_t{256} << 10U;

    std::optional<platform::EncodedData> data;
    std::string_view sfSymbol;
    double size = 0;

    platform::View body(const platform::Environment& environment) const;
};

/// A dot `size` points wide, or the room for it.
struct AccentDot {
    std::optional<platform::Color> color;
    double size = 0;

    platform::View body(const platform::Environment& environment) const;
};

/// The content as a link to `url`, or as it is where there is none. `id` is that of the item.
struct LinkedItem {
    std::optional<platform::URL> url;
    std::string id;
    platform::View content;

    platform::View body() const;
};

/// What a row needs of its item, taken out of it once.
struct RowContent {
    std::string title;
    std::optional<std::string> subtitle;
    std::string_view icon;
    std::optional<platform::EncodedData> iconData;
    std::optional<platform::Color> dotColor;

    template <DisplayableItem Item>
    static RowContent of(const Item& item) {
        return {.title = item.displayTitle(),
                .subtitle = item.displaySubtitle(),
                .icon = item.displayIcon(),
                .iconData = item.displayIconData(),
                .dotColor = item.dotColor()};
    }
};

/// Title alone, in the small family.
struct CompactItemRow {
    RowContent item;
    platform::View body(const platform::Environment& environment) const;
};

/// Title, and the subtitle at the trailing edge; in the medium family.
struct StandardItemRow {
    RowContent item;
    platform::View body(const platform::Environment& environment) const;
};

/// The subtitle under the title; in the large families.
struct DetailedItemRow {
    RowContent item;
    platform::View body(const platform::Environment& environment) const;
};

} // namespace foliovault
