// White space as Unicode has it, line breaks included: the characters with its White_Space property.
//
// U+0009…000D, 0020, 0085, 00A0, 1680, 2000…200A, 2028, 2029, 202F, 205F and 3000; the zero-width space is not one.
// Texts are UTF-8. All functions are pure; any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

constexpr bool isAsciiWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// Whether a character of white space may begin with `byte`; false means that none does.
constexpr bool mayBeginWhiteSpace(char byte) {
    return isAsciiWhiteSpace(byte) || byte == '\xC2' || (byte >= '\xE1' && byte <= '\xE3');
}

/// How many bytes the white space has that `text` begins with, one character of it; 0 if it begins with something else.
std::size_t leadingWhiteSpace(std::string_view text);

/// `text` without the white space before and after it.
std::string_view trimmed(std::string_view text);

/// Makes every run of white space one blank, and none of those at the ends.
void collapseWhiteSpace(std::string& text);

} // namespace platform
