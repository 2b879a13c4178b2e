// JSON read into a tree. Any thread.
#pragma once

#include <nlohmann/json.hpp>

#include <string_view>

namespace platform {

/// Reads a whole text. Returns a discarded value if it is not JSON, or if `watch` refuses a part of it.
inline nlohmann::json parsedJson(std::string_view text, const nlohmann::json::parser_callback_t& watch = nullptr) {
    constexpr bool withExceptions = false;
    // The library stops at a NUL. No JSON has one, so such a text fails like an empty one.
    const bool isWhole = text.find('\0') == std::string_view::npos;
    return nlohmann::json::parse(isWhole ? text : std::string_view(), watch, withExceptions);
}

} // namespace platform
