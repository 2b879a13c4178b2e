// Texts in UTF-8, and from UTF-16. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace platform {

bool isAscii(std::string_view text);

/// Passes over UTF-8 from `p` on, at least as far as `stop` and not beyond the character that ends there or after; null
/// if there is anything but UTF-8 before the `end`. ASCII passes at the speed of memory.
const char* skipUtf8(const char* p, const char* stop, const char* end);

/// Whether `character` may stand in a text: a scalar value of Unicode.
constexpr bool isCharacter(char32_t character) {
    return character < 0xD800 || (character > 0xDFFF && character <= 0x10FFFF);
}

/// Appends `character`, U+FFFD in place of what is none.
void appendUtf8(std::string& text, char32_t character);

/// Pairs of bytes, the high one first, as UTF-8; a lone surrogate becomes U+FFFD.
std::string utf8FromUtf16BigEndian(std::string_view bytes);

} // namespace platform
