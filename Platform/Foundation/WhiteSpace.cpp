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

void collapseWhiteSpace(std::string& text) {
    // Writes in place: writing never overtakes reading.
    std::size_t size = 0;
    bool isBlankDue = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t white =
            mayBeginWhiteSpace(text[at]) ? leadingWhiteSpace(std::string_view(text).substr(at)) : 0;
        if (white != 0) {
            isBlankDue = size != 0;
            at += white;
            continue;
        }
        if (isBlankDue) {
            text[size++] = ' ';
            isBlankDue = false;
        }
        text[size++] = text[at++];
    }
    text.resize(size);
}

} // namespace platform
