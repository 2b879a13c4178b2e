// UTF-8 as in RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// The character, or the invalid bytes, at the beginning of a text.
struct Utf8Sequence {
    /// Bytes of the character, or the invalid bytes that one U+FFFD replaces by the Unicode standard's "substitution of
    /// maximal subparts". 1 or more.
    std::size_t length = 1;
    bool isCharacter = false;
};
/// Requires a text that is not empty.
Utf8Sequence leadingUtf8Sequence(std::string_view text);

/// Returns whether all of `text` is UTF-8.
bool isUtf8(std::string_view text);

bool isAscii(std::string_view text);

/// Returns whether `character` is a scalar value of Unicode.
constexpr bool isCharacter(char32_t character) {
    return character < 0xD800 || (character > 0xDFFF && character <= 0x10FFFF);
}

/// Appends `character`, or U+FFFD if it is not a scalar value.
void appendUtf8(std::string& text, char32_t character);

/// Converts UTF-16, big-endian. A lone surrogate becomes U+FFFD.
std::string utf8FromUtf16BigEndian(std::string_view bytes);

inline constexpr std::string_view utf8ReplacementCharacter = "\xEF\xBF\xBD";

} // namespace platform
