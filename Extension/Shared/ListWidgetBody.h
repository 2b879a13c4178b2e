// The view of a list widget in every family: header, as many rows as fit, and the number of further items.
//
//   small         the widget's own header, compact rows
//   medium        header with subtitle, standard rows
//   large         header with subtitle, the widget's detail rows with dividers between them
//   extra large   the same in two columns, filled one after the other
//
// An unknown family looks like medium.
#pragma once

#include "Extension/Shared/DisplayableItem.h"
#include "Extension/Shared/ItemRows.h"
#include "Extension/Shared/WidgetHeader.h"
#include "Platform/Views/Divider.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace foliovault {

template <DisplayableItem Item>
class ListWidgetBody {
    using View = platform::View;
    using Views = platform::Views;
    using Items = std::span<const Item>;

  public:
    /// The entry's items. The maximum is `listEntryItemCap`.
    Items items;
    /// The number of items, those that are not in `items` included.
    std::int64_t displayCount = 0;
    /// The header's title, in its English wording.
    const char* title = "";
    /// By default the number of items.
    std::optional<std::string> subtitle = {};
    /// By default the title.
    std::function<View()> smallHeader = {};
    /// By default a `DetailedItemRow`.
    std::function<View(const Item&)> detailRow = {};

    View body(const platform::Environment& environment) const {
        switch (environment.family) {
        case platform::WidgetFamily::small:
            return column(4, {ownHeader(), platform::spacer(2)}, rows<CompactItemRow>(maxSmall, environment),
                          moreLine(maxSmall));
        case platform::WidgetFamily::large: {
            const auto more = moreLine(maxLarge);
            return column(0, {header()}, detailRows(firstItems(maxLarge), environment),
                          more ? std::optional(more->padding({.top = 4})) : std::nullopt);
        }
        case platform::WidgetFamily::extraLarge:
            return column(0, {header()}, {columns(environment)}, std::nullopt);
        case platform::WidgetFamily::medium:
        case platform::WidgetFamily::unknown:
            break;
        }
        return column(0, {header()}, rows<StandardItemRow>(maxMedium, environment), moreLine(maxMedium));
    }

  private:
    static constexpr std::size_t maxSmall = 4;
    static constexpr std::size_t maxMedium = 5;
    static constexpr std::size_t maxLarge = 7;
    static constexpr std::size_t maxXL = listEntryItemCap;

    /// Returns `parts` with `rows` under them, and `more` at the bottom.
    static View column(double spacing, Views parts, Views rows, std::optional<View> more) {
        parts.insert(parts.end(), rows.begin(), rows.end());
        parts.push_back(platform::spacer(0));
        if (more) {
            parts.push_back(*more);
        }
        return stack(spacing, std::move(parts));
    }

    static View stack(double spacing, Views parts) {
        return platform::vStack({.alignment = platform::HorizontalAlignment::leading, .spacing = spacing},
                                std::move(parts));
    }

    View ownHeader() const {
        return smallHeader ? smallHeader() : platform::text(platform::localized(title)).font(platform::headline);
    }

    View header() const {
        const auto count = [this] { return platform::localizedCount("%lld items", displayCount); };
        return WidgetHeader{.title = title, .subtitle = subtitle ? *subtitle : count()}.body().padding({.bottom = 6});
    }

    template <template <class> class Row>
    Views rows(std::size_t count, const platform::Environment& environment) const {
        Views rows;
        for (const Item& item : firstItems(count)) {
            rows.push_back(linked(item, Row<Item>{item}.body(environment)));
        }
        return rows;
    }

    View columns(const platform::Environment& environment) const {
        const Items shown = firstItems(maxXL);
        const Items left = shown.first((shown.size() + 1) / 2);
        const Items right = shown.subspan(left.size());
        const auto column = [&](Items part) { return stack(0, detailRows(part, environment)); };
        return right.empty() ? column(left)
                             : platform::hStack({.alignment = platform::VerticalAlignment::top, .spacing = 16},
                                                {column(left), platform::divider(), column(right)});
    }

    /// Returns a view for each item: its detail row, and except for the last a divider that starts after dot and icon.
    Views detailRows(Items shown, const platform::Environment& environment) const {
        Views rows;
        for (const Item& item : shown) {
            View row = detailRow ? detailRow(item) : DetailedItemRow<Item>{item}.body(environment);
            Views parts{linked(item, std::move(row))};
            if (item.id != shown.back().id) {
                parts.push_back(platform::divider().padding({.leading = 30}));
            }
            rows.push_back(stack(0, std::move(parts)));
        }
        return rows;
    }

    std::optional<View> moreLine(std::size_t maxRows) const {
        const auto more = displayCount - static_cast<std::int64_t>(maxRows);
        if (more <= 0) {
            return std::nullopt;
        }
        return platform::text(platform::localizedCount("+%lld more", more))
            .font(platform::caption2)
            .foreground(platform::secondary);
    }

    Items firstItems(std::size_t count) const { return items.first(std::min(count, items.size())); }

    static View linked(const Item& item, View row) {
        return LinkedItem{.url = item.displayURL(), .id = item.id, .content = std::move(row)}.body();
    }
};

} // namespace foliovault
