// What files and command lines call the ways in which a widget may look.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

namespace host {

/// The enumerations' names, in the order of their values.
inline constexpr std::array<std::string_view, 2> colorSchemeNames{"light", "dark"};
inline constexpr std::array<std::string_view, 3> drawingModeNames{"fullColor", "tinted", "vibrant"};
inline constexpr std::array<std::string_view, 2> contrastNames{"normal", "high"};

/// Nothing for a name that is none of these.
template <class Value, std::size_t Count>
std::optional<Value> valueNamed(std::string_view name, const std::array<std::string_view, Count>& names) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? std::nullopt : std::optional(static_cast<Value>(std::distance(names.begin(), found)));
}

} // namespace host
