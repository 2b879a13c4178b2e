// The picture of a list widget in every family: header, as many rows as fit, and how many more there are.
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
#include "Platform/Foundation/Localization.h"
#include "Platform/Views/Divider.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Text.h"
#include "Platform/Widgets/Environment.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace foliovault {

template <DisplayableItem Item>
class ListWidgetBody {
  public:
    /// The entry's items, at most `listEntryItemCap` of them.
    std::span<const Item> items;
    /// How many there are in all.
    std::int64_t displayCount = 0;
    /// The header's title, in its English wording.
    const char* title = "";
    std::string subtitle;
    std::function<platform::View()> smallHeader;
    std::function<platform::View(const Item&)> detailRow;

    platform::View body(const platform::Environment& environment) const {
        switch (environment.family) {
        case platform::WidgetFamily::small:
            return smallView(environment);
        case platform::WidgetFamily::large:
            return largeView();
        case platform::WidgetFamily::extraLarge:
            return extraLargeView();
        case platform::WidgetFamily::medium:
        case platform::WidgetFamily::unknown:
            break;
        }
        return mediumView(environment);
    }

  private:
    static constexpr std::size_t maxSmall = 4;
    static constexpr std::size_t maxMedium = 5;
    static constexpr std::size_t maxLarge = 7;
    static constexpr std::size_t maxXL = listEntryItemCap;

    using View = platform::View;
    using Views = platform::Views;
    using Items = std::span<const Item>;

    static constexpr platform::VStackOptions tightColumn{.alignment = platform::HorizontalAlignment::leading,
                                                         .spacing = 0};

    View smallView(const platform::Environment& environment) const {
        Views parts{smallHeader(), platform::spacer(2)};
        for (const Item& item : firstItems(maxSmall)) {
            parts.push_back(linked(item, CompactItemRow{RowContent::of(item)}.body(environment)));
        }
        parts.push_back(platform::spacer(0));
        if (const auto line = moreLine(maxSmall)) {
            parts.push_back(*line);
        }
        return platform::vStack({.alignment = platform::HorizontalAlignment::leading, .spacing = 4}, std::move(parts));
    }

    View mediumView(const platform::Environment& environment) const {
        Views parts{header()};
        for (const Item& item : firstItems(maxMedium)) {
            parts.push_back(linked(item, StandardItemRow{RowContent::of(item)}.body(environment)));
        }
        parts.push_back(platform::spacer(0));
        if (const auto line = moreLine(maxMedium)) {
            parts.push_back(*line);
        }
        return platform::vStack(tightColumn, std::move(parts));
    }

    View largeView() const {
        Views parts{header()};
        for (View& row : detailRows(firstItems(maxLarge))) {
            parts.push_back(std::move(row));
        }
        parts.push_back(platform::spacer(0));
        if (const auto line = moreLine(maxLarge)) {
            parts.push_back(line->padding({.top = 4}));
        }
        return platform::vStack(tightColumn, std::move(parts));
    }

    View extraLargeView() const {
        const Items shown = firstItems(maxXL);
        const Items left = shown.first((shown.size() + 1) / 2);
        const Items right = shown.subspan(left.size());
        const View columns = right.empty()
                                 ? xlColumn(left)
                                 : platform::hStack({.alignment = platform::VerticalAlignment::top, .spacing = 16},
                                                    {xlColumn(left), platform::divider(), xlColumn(right)});
        return platform::vStack(tightColumn, {header(), columns, platform::spacer(0)});
    }

    View xlColumn(Items column) const { return platform::vStack(tightColumn, detailRows(column)); }

    /// One view an item: its detail row, and under all but the last a divider that starts past dot and icon.
    Views detailRows(Items shown) const {
        Views rows;
        for (const Item& item : shown) {
            Views parts{linked(item, detailRow(item))};
            if (item.id != shown.back().id) {
                parts.push_back(platform::divider().padding({.leading = 30}));
            }
            rows.push_back(platform::vStack(tightColumn, std::move(parts)));
        }
        return rows;
    }

    View header() const { return WidgetHeader{.title = title, .subtitle = subtitle}.body().padding({.bottom = 6}); }

    std::optional<View> moreLine(std::size_t shownAtMost) const {
        const auto maximum = static_cast<std::int64_t>(shownAtMost);
        if (displayCount <= maximum) {
            return std::nullopt;
        }
        return platform::text(platform::localizedCount("+%lld more", displayCount - maximum))
            .font(platform::caption2)
            .foreground(platform::secondary);
    }

    Items firstItems(std::size_t count) const { return items.first(std::min(count, items.size())); }

    static View linked(const Item& item, View row) {
        return LinkedItem{.url = item.displayURL(), .id = item.id, .content = std::move(row)}.body();
    }
};

} // namespace foliovault
