// Texts in UTF-8, as RFC 3629 has it: no overlong forms, no surrogates, nothing above U+10FFFF. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// What `text`, which must not be empty, begins with: one character, or invalid bytes.
struct Utf8Sequence {
    /// Bytes of the character. Of invalid ones, the bytes that one U+FFFD stands for, as the Unicode standard's
    /// "substitution of maximal subparts" counts them. At least 1.
    std::size_t length = 1;
    bool isCharacter = false;
};
Utf8Sequence leadingUtf8Sequence(std::string_view text);

/// Whether `text` is UTF-8 throughout.
bool isUtf8(std::string_view text);

bool isAscii(std::string_view text);

/// Whether `character` may stand in a text: a scalar value of Unicode.
constexpr bool isCharacter(char32_t character) {
    return character < 0xD800 || (character > 0xDFFF && character <= 0x10FFFF);
}

/// Appends `character`, or U+FFFD if it may not stand in a text.
void appendUtf8(std::string& text, char32_t character);

/// Pairs of bytes, the high one first, as UTF-8; a lone surrogate becomes U+FFFD.
std::string utf8FromUtf16BigEndian(std::string_view bytes);

inline constexpr std::string_view utf8ReplacementCharacter = "\xEF\xBF\xBD";

} // namespace platform
