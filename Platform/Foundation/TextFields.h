// Texts of several fields, taken apart one by one.
#pragma once

#include <algorithm>
#include <string_view>

namespace platform {

/// The text before the next `separator`, or all that is left, taken off `rest` together with the separator.
inline std::string_view nextField(std::string_view& rest, char separator) {
    const std::string_view field = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(field.size() + 1, rest.size()));
    return field;
}

} // namespace platform
