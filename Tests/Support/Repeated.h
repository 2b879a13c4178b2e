// Long texts.
#pragma once

#include <string>
#include <string_view>

namespace platform {

inline std::string repeated(std::string_view part, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

} // namespace platform
