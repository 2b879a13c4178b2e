// The rows of lists, and their parts.
//
// A row is dot, icon and text from leading to trailing; larger families have larger rows. An item without a dot has an
// empty space for it, so that texts are aligned.
#pragma once

#include "Extension/Shared/DisplayableItem.h"
#include "Platform/Views/Image.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"
#include "Platform/Widgets/Environment.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace foliovault {

/// The item's own picture in full colour, else its symbol; `size` points wide and high. A picture of more than
/// `maxIconSize` stored bytes is not shown, so that sixteen fit into a response.
struct ItemIconView {
    static constexpr std::size_t maxIconSize = std::size_t{256} << 10U;

    std::optional<platform::EncodedData> data;
    std::string_view sfSymbol;
    double size = 0;

    platform::View body(const platform::Environment& environment) const {
        const platform::View icon = platform::symbol(sfSymbol).foreground(platform::secondary);
        const bool showsPicture = data && data->storedSize() <= maxIconSize &&
                                  environment.renderingMode == platform::RenderingMode::fullColor;
        return (showsPicture ? platform::image(*data, icon) : icon).frame({.width = size, .height = size});
    }
};

/// A dot `size` points wide, or an empty space.
struct AccentDot {
    std::optional<platform::Color> color;
    double size = 0;

    platform::View body(const platform::Environment& environment) const {
        const platform::View dot = (color ? platform::circle(*color) : platform::clear()).frame({size, size});
        return !color || environment.renderingMode == platform::RenderingMode::fullColor ? dot : dot.accentable();
    }
};

/// The content as a link to `url`; without a `url` unchanged. `id` is that of the item.
struct LinkedItem {
    std::optional<platform::URL> url;
    std::string id;
    platform::View content;

    platform::View body() const { return url ? content.link(url->absoluteString(), id) : content; }
};

/// Returns the dot and the icon at the start of a row.
template <DisplayableItem Item>
platform::Views dotAndIcon(const Item& item, double dotSize, double iconSize, platform::Font iconFont,
                           const platform::Environment& environment) {
    return {AccentDot{.color = item.dotColor(), .size = dotSize}.body(environment),
            ItemIconView{.data = item.displayIconData(), .sfSymbol = item.displayIcon(), .size = iconSize}
                .body(environment)
                .font(iconFont)
                .frame({.width = iconSize})};
}

/// The title, in the small family.
template <DisplayableItem Item>
struct CompactItemRow {
    const Item& item;

    platform::View body(const platform::Environment& environment) const {
        using namespace platform;
        Views parts = dotAndIcon(item, 5, 12, caption2, environment);
        parts.push_back(text(item.displayTitle()).font(caption).lineLimit(1).foreground(primary));
        return hStack({.spacing = 4}, std::move(parts));
    }
};

/// Title, and the subtitle at the trailing edge; in the medium family.
template <DisplayableItem Item>
struct StandardItemRow {
    const Item& item;

    platform::View body(const platform::Environment& environment) const {
        using namespace platform;
        Views parts = dotAndIcon(item, 6, 16, callout, environment);
        parts.push_back(text(item.displayTitle()).font(callout).lineLimit(1).foreground(primary));
        parts.push_back(spacer());
        if (const auto subtitle = item.displaySubtitle()) {
            parts.push_back(text(*subtitle).font(caption2).foreground(tertiary));
        }
        return hStack({.spacing = 6}, std::move(parts)).padding({.top = 3, .bottom = 3});
    }
};

/// The subtitle under the title; in the large families.
template <DisplayableItem Item>
struct DetailedItemRow {
    const Item& item;

    platform::View body(const platform::Environment& environment) const {
        using namespace platform;
        Views lines{text(item.displayTitle()).font(callout).lineLimit(1).foreground(primary)};
        if (const auto subtitle = item.displaySubtitle()) {
            lines.push_back(text(*subtitle).font(caption2).lineLimit(1).foreground(secondary));
        }
        Views parts = dotAndIcon(item, 6, 18, callout, environment);
        parts.push_back(vStack({.alignment = HorizontalAlignment::leading, .spacing = 1}, std::move(lines)));
        parts.push_back(spacer());
        return hStack({.spacing = 8}, std::move(parts)).padding({.top = 3, .bottom = 3});
    }
};

} // namespace foliovault
