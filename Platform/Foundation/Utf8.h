// UTF-8 as RFC 3629 has it: no overlong forms, no surrogates, nothing above U+10FFFF.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// What `text`, which must not be empty, begins with: one character, or bytes that are none.
struct Utf8Sequence {
    /// Bytes of the character; where there is none, the bytes that one U+FFFD stands for, as the Unicode standard's
    /// "substitution of maximal subparts" counts them. At least 1.
    std::size_t length = 1;
    bool isCharacter = false;
};
Utf8Sequence leadingUtf8Sequence(std::string_view text);

/// Whether `text` is UTF-8 throughout.
bool isUtf8(std::string_view text);

inline constexpr std::string_view utf8ReplacementCharacter = "\xEF\xBF\xBD";

} // namespace platform
