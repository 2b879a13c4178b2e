// The requirements of an item in a list widget.
#pragma once

#include "Platform/Foundation/EncodedData.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Views/Style.h"

#include <concepts>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace foliovault {

/// The maximum number of items in an entry, however long the application's list is.
inline constexpr std::size_t listEntryItemCap = 16;

/// `id` identifies the item among the rows of a list. Equal items have equal ids. `displayIcon` is the symbol for an
/// item without an icon image. A row without a `displayURL` opens nothing.
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

template <foliovault::DisplayableItem Item>
struct std::hash<Item> {
    std::size_t operator()(const Item& item) const { return std::hash<std::string>{}(item.id); }
};
