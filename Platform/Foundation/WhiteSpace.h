// White space: the characters with Unicode's White_Space property, line breaks included.
//
// U+0009…000D, 0020, 0085, 00A0, 1680, 2000…200A, 2028, 2029, 202F, 205F and 3000, but not the zero-width space. Texts
// are UTF-8. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

constexpr bool isAsciiWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// Returns whether a white-space character may begin with `byte`.
constexpr bool mayBeginWhiteSpace(char byte) {
    return isAsciiWhiteSpace(byte) || byte == '\xC2' || (byte >= '\xE1' && byte <= '\xE3');
}

/// Returns the bytes of the white-space character that `text` begins with; 0 for any other beginning.
std::size_t leadingWhiteSpace(std::string_view text);

/// Returns `text` without white space at its ends.
std::string_view trimmed(std::string_view text);

/// Replaces every run of white space by one blank, and removes it at the ends.
void collapseWhiteSpace(std::string& text);

} // namespace platform
