#include "Platform/Foundation/WhiteSpace.h"

namespace platform {

namespace {

bool isTwoByteWhiteSpace(std::string_view character) {
    return character == "\u0085" || character == "\u00A0";
}

bool isThreeByteWhiteSpace(std::string_view character) {
    return character == "\u1680" || (character >= "\u2000" && character <= "\u200A") || character == "\u2028" ||
           character == "\u2029" || character == "\u202F" || character == "\u205F" || character == "\u3000";
}

std::size_t trailingWhiteSpace(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    if (isAsciiWhiteSpace(text.back())) {
        return 1;
    }
    if (text.size() >= 2 && isTwoByteWhiteSpace(text.substr(text.size() - 2))) {
        return 2;
    }
    return text.size() >= 3 && isThreeByteWhiteSpace(text.substr(text.size() - 3)) ? 3 : 0;
}

} // namespace

std::size_t leadingWhiteSpace(std::string_view text) {
    if (text.empty() || !mayBeginWhiteSpace(text.front())) {
        return 0;
    }
    if (isAsciiWhiteSpace(text.front())) {
        return 1;
    }
    if (isTwoByteWhiteSpace(text.substr(0, 2))) {
        return 2;
    }
    return isThreeByteWhiteSpace(text.substr(0, 3)) ? 3 : 0;
}

std::string_view trimmed(std::string_view text) {
    while (const std::size_t size = leadingWhiteSpace(text)) {
        text.remove_prefix(size);
    }
    while (const std::size_t size = trailingWhiteSpace(text)) {
        text.remove_suffix(size);
    }
    return text;
}

} // namespace platform
