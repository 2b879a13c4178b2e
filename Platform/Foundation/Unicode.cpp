#include "Platform/Foundation/Unicode.h"

#include "Platform/Foundation/ByteScan.h"
#include "Platform/Foundation/Utf8.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace platform {

namespace {

constexpr std::uint64_t highBits = 0x8080808080808080;

std::uint64_t wordAt(const char* p) {
    std::uint64_t word = 0;
    std::memcpy(&word, p, sizeof word);
    return word;
}

/// The index of the first byte of a word in memory that has one of its bits set.
std::size_t firstByteIn(std::uint64_t word) {
    constexpr std::size_t bitsOfByte = 8;
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(word) : std::countl_zero(word);
    return static_cast<std::size_t>(bits) / bitsOfByte;
}

/// How many bytes of ASCII `text` begins with.
std::size_t asciiPrefix(std::string_view text) {
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    constexpr std::size_t blockSize = 64;
    std::size_t size = 0;
    while (text.size() - size >= blockSize && isAsciiBlock(text.data() + size)) {
        size += blockSize;
    }
    for (; text.size() - size >= wordSize; size += wordSize) {
        if (const std::uint64_t others = wordAt(text.data() + size) & highBits; others != 0) {
            return size + firstByteIn(others);
        }
    }
    while (size < text.size() && static_cast<unsigned char>(text[size]) < 0x80) {
        ++size;
    }
    return size;
}

/// Writes `character`, U+FFFD in place of what is none, and answers with the number of bytes.
std::size_t writeUtf8(char* out, char32_t character) {
    if (!isCharacter(character)) {
        character = U'\uFFFD';
    }
    const auto lead = [&](unsigned mark, unsigned shift) { return static_cast<char>(mark | character >> shift); };
    const auto trail = [&](unsigned shift) { return static_cast<char>(0x80U | (character >> shift & 0x3FU)); };
    if (character < 0x80) {
        out[0] = static_cast<char>(character);
        return 1;
    }
    if (character < 0x800) {
        out[0] = lead(0xC0, 6);
        out[1] = trail(0);
        return 2;
    }
    if (character < 0x10000) {
        out[0] = lead(0xE0, 12);
        out[1] = trail(6);
        out[2] = trail(0);
        return 3;
    }
    out[0] = lead(0xF0, 18);
    out[1] = trail(12);
    out[2] = trail(6);
    out[3] = trail(0);
    return 4;
}

} // namespace

bool isAscii(std::string_view text) {
    return asciiPrefix(text) == text.size();
}

const char* skipUtf8(const char* p, const char* stop, const char* end) {
    while (p < stop) {
        p += asciiPrefix({p, static_cast<std::size_t>(stop - p)});
        while (p < stop && static_cast<unsigned char>(*p) >= 0x80) {
            const Utf8Sequence sequence = leadingUtf8Sequence({p, static_cast<std::size_t>(end - p)});
            if (!sequence.isCharacter) {
                return nullptr;
            }
            p += sequence.length;
        }
    }
    return p;
}

void appendUtf8(std::string& text, char32_t character) {
    std::array<char, 4> bytes;
    text.append(bytes.data(), writeUtf8(bytes.data(), character));
}

std::string utf8FromUtf16BigEndian(std::string_view bytes) {
    const std::size_t count = bytes.size() / 2;
    const auto unit = [bytes](std::size_t index) -> char32_t {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[2 * index]) << 8U |
                                     static_cast<unsigned char>(bytes[2 * index + 1]));
    };
    constexpr std::size_t mostBytesOfUnit = 3;
    std::string text(mostBytesOfUnit * count, '\0');
    char* out = text.data();
    for (std::size_t index = 0; index < count; ++index) {
        const char32_t high = unit(index);
        const bool isHigh = high >= 0xD800 && high < 0xDC00;
        const char32_t low = isHigh && index + 1 < count ? unit(index + 1) : 0;
        if (low >= 0xDC00 && low < 0xE000) {
            out += writeUtf8(out, 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00));
            ++index;
        } else {
            out += writeUtf8(out, high);
        }
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
    return text;
}

} // namespace platform
