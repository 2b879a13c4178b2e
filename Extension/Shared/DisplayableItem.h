// What an item must tell to be shown in a list widget.
#pragma once

#include "Platform/Foundation/EncodedData.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Views/Style.h"

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace foliovault {

/// The most items that an entry carries, however long the application's list is.
inline constexpr std::size_t listEntryItemCap = 16;

/// `id` identifies the item among the rows of a list. `displayIcon` is the symbol for where there is no icon image, no
/// `displayURL` means that the row opens nothing, no `dotColor` that it has no dot.
template <class Item>
concept DisplayableItem = std::equality_comparable<Item> && requires(const Item& item) {
    { item.id } -> std::convertible_to<std::string>;
    { item.displayTitle() } -> std::convertible_to<std::string>;
    { item.displayIcon() } -> std::convertible_to<std::string_view>;
    { item.displayIconData() } -> std::convertible_to<std::optional<platform::EncodedData>>;
    { item.displayURL() } -> std::convertible_to<std::optional<platform::URL>>;
    { item.displaySubtitle() } -> std::convertible_to<std::optional<std::string>>;
    { item.dotColor() } -> std::convertible_to<std::optional<platform::Color>>;
};

} // namespace foliovault
