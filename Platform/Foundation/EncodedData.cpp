#include "Platform/Foundation/EncodedData.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace platform {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char padding = '=';

constexpr std::uint8_t noDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> makeDigitValues() {
    std::array<std::uint8_t, 256> values;
    values.fill(noDigit);
    for (std::size_t value = 0; value < alphabet.size(); ++value) {
        values[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
    }
    return values;
}

constexpr std::array<std::uint8_t, 256> digitValues = makeDigitValues();

std::string decodedBase64(std::string_view text) {
    text = text.substr(0, text.find(padding));
    std::string bytes(text.size() / 4 * 3 + 3, '\0');
    std::size_t size = 0;
    std::uint32_t bits = 0;
    unsigned bitCount = 0;
    for (const char character : text) {
        const std::uint8_t value = digitValues[static_cast<unsigned char>(character)];
        if (value == noDigit) {
            continue;
        }
        bits = bits << 6U | value;
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            bytes[size++] = static_cast<char>(bits >> bitCount);
        }
    }
    bytes.resize(size);
    return bytes;
}

/// The two digits of every group of twelve bits.
constexpr std::array<std::array<char, 2>, 4096> makeDigitPairs() {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t group = 0; group < pairs.size(); ++group) {
        pairs[group] = {alphabet[group >> 6U], alphabet[group & 0x3FU]};
    }
    return pairs;
}

constexpr std::array<std::array<char, 2>, 4096> digitPairs = makeDigitPairs();

/// Eight bytes as a number, the first of them the highest.
std::uint64_t bigEndianAt(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

void appendEncoded(std::string& out, std::string_view bytes) {
    const std::size_t start = out.size();
    out.resize(start + (bytes.size() + 2) / 3 * 4, padding);
    char* digits = out.data() + start;
    const auto put = [&digits](std::uint64_t twelveBits) {
        std::memcpy(digits, digitPairs[twelveBits & 0xFFFU].data(), 2);
        digits += 2;
    };
    const auto byteAt = [bytes](std::size_t index) -> std::uint64_t {
        return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
    };
    std::size_t index = 0;
    for (; index + sizeof(std::uint64_t) <= bytes.size(); index += 6) {
        const std::uint64_t group = bigEndianAt(bytes.data() + index);
        put(group >> 52U);
        put(group >> 40U);
        put(group >> 28U);
        put(group >> 16U);
    }
    for (; index + 3 <= bytes.size(); index += 3) {
        const std::uint64_t group = byteAt(index) << 16U | byteAt(index + 1) << 8U | byteAt(index + 2);
        put(group >> 12U);
        put(group);
    }
    if (const std::size_t rest = bytes.size() - index; rest > 0) {
        put(byteAt(index) << 4U | byteAt(index + 1) >> 4U);
        if (rest == 2) {
            *digits = alphabet[(byteAt(index + 1) & 0x0FU) << 2U];
        }
    }
}

} // namespace

Data EncodedData::decoded() const {
    return encoding_ == Encoding::raw ? stored_ : Data::owning(decodedBase64(stored_.bytes()));
}

void EncodedData::appendBase64(std::string& out) const {
    if (encoding_ == Encoding::raw) {
        appendEncoded(out, stored_.bytes());
    } else {
        appendEncoded(out, decodedBase64(stored_.bytes()));
    }
}

bool operator==(const EncodedData& a, const EncodedData& b) {
    return (a.encoding_ == b.encoding_ && a.stored_ == b.stored_) || a.decoded() == b.decoded();
}

} // namespace platform
