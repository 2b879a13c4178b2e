#include "Platform/Foundation/EncodedData.h"

#include <array>
#include <cstddef>
#include <cstdint>
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

void appendEncoded(std::string& out, std::string_view bytes) {
    out.reserve(out.size() + (bytes.size() + 2) / 3 * 4);
    const auto byteAt = [bytes](std::size_t index) -> std::uint32_t {
        return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
    };
    for (std::size_t index = 0; index < bytes.size(); index += 3) {
        const std::uint32_t group = byteAt(index) << 16U | byteAt(index + 1) << 8U | byteAt(index + 2);
        out += alphabet[group >> 18U];
        out += alphabet[group >> 12U & 0x3FU];
        out += index + 1 < bytes.size() ? alphabet[group >> 6U & 0x3FU] : padding;
        out += index + 2 < bytes.size() ? alphabet[group & 0x3FU] : padding;
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
