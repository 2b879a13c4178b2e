#include "Platform/Foundation/Utf8.h"

#include "Platform/Foundation/AsciiSet.h"

#include <cstdint>
#include <cstring>

namespace platform {

namespace {

/// The length of a character, and the range of its second byte. Later bytes are 80…BF.
struct Lead {
    std::size_t length;
    std::uint8_t minSecond;
    std::uint8_t maxSecond;
};

constexpr Lead leadOf(std::uint8_t byte) {
    if (byte < 0x80) {
        return {1, 0, 0};
    }
    if (byte < 0xC2 || byte > 0xF4) {
        return {0, 0, 0};
    }
    if (byte < 0xE0) {
        return {2, 0x80, 0xBF};
    }
    if (byte < 0xF0) {
        return {3, static_cast<std::uint8_t>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<std::uint8_t>(byte == 0xED ? 0x9F : 0xBF)};
    }
    return {4, static_cast<std::uint8_t>(byte == 0xF0 ? 0x90 : 0x80),
            static_cast<std::uint8_t>(byte == 0xF4 ? 0x8F : 0xBF)};
}

/// Returns the number of ASCII bytes at the beginning of `text`.
std::size_t asciiPrefix(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::size_t size = 0;
    for (std::uint64_t word = 0; text.size() - size >= sizeof word; size += sizeof word) {
        std::memcpy(&word, text.data() + size, sizeof word);
        if ((word & highBits) != 0) {
            break;
        }
    }
    while (size < text.size() && isAscii(text[size])) {
        ++size;
    }
    return size;
}

} // namespace

Utf8Sequence leadingUtf8Sequence(std::string_view text) {
    const auto byteAt = [text](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
    const Lead lead = leadOf(byteAt(0));
    if (lead.length == 0) {
        return {1, false};
    }
    for (std::size_t index = 1; index < lead.length; ++index) {
        const std::uint8_t min = index == 1 ? lead.minSecond : 0x80;
        const std::uint8_t max = index == 1 ? lead.maxSecond : 0xBF;
        if (index == text.size() || byteAt(index) < min || byteAt(index) > max) {
            return {index, false};
        }
    }
    return {lead.length, true};
}

bool isUtf8(std::string_view text) {
    for (;;) {
        text.remove_prefix(asciiPrefix(text));
        while (!text.empty() && !isAscii(text.front())) {
            const Utf8Sequence sequence = leadingUtf8Sequence(text);
            if (!sequence.isCharacter) {
                return false;
            }
            text.remove_prefix(sequence.length);
        }
        if (text.empty()) {
            return true;
        }
    }
}

bool isAscii(std::string_view text) {
    return asciiPrefix(text) == text.size();
}

void appendUtf8(std::string& text, char32_t character) {
    if (!isCharacter(character)) {
        text += utf8ReplacementCharacter;
    } else if (character < 0x80) {
        text += static_cast<char>(character);
    } else {
        const unsigned trails = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
        const unsigned mark = 0xF80U >> trails;
        text += static_cast<char>(mark | character >> 6 * trails);
        for (unsigned left = trails; left-- > 0;) {
            text += static_cast<char>(0x80U | (character >> 6 * left & 0x3FU));
        }
    }
}

std::string utf8FromUtf16BigEndian(std::string_view bytes) {
    const std::size_t count = bytes.size() / 2;
    const auto unit = [bytes](std::size_t index) -> char32_t {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[2 * index]) << 8U |
                                     static_cast<unsigned char>(bytes[2 * index + 1]));
    };
    std::string text;
    text.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        const char32_t high = unit(index);
        if (high < 0x80) {
            text += static_cast<char>(high);
            continue;
        }
        const bool isHigh = high >= 0xD800 && high < 0xDC00;
        const char32_t low = isHigh && index + 1 < count ? unit(index + 1) : 0;
        if (low >= 0xDC00 && low < 0xE000) {
            appendUtf8(text, 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00));
            ++index;
        } else {
            appendUtf8(text, high);
        }
    }
    return text;
}

} // namespace platform
