#include "Platform/Foundation/EncodedData.h"

#include <array>
#include <cstdint>

namespace platform {
namespace {

constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The value of every character that is a digit, and `noDigit` for the others.
constexpr std::uint8_t noDigit = 0xFF;
constexpr std::array<std::uint8_t, 256> digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        values[static_cast<unsigned char>(digits[i])] = static_cast<std::uint8_t>(i);
    }
    return values;
}();

std::string decodeBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t pending = 0;
    unsigned bits = 0;
    for (const char c : text) {
        if (c == '=') {
            break;
        }
        const std::uint8_t value = digitValues[static_cast<unsigned char>(c)];
        if (value == noDigit) {
            continue;
        }
        pending = pending << 6U | value;
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes += static_cast<char>(pending >> bits & 0xFFU);
        }
    }
    return bytes;
}

void encodeBase64(std::string_view bytes, std::string& out) {
    const auto byteAt = [&](std::size_t i) {
        return i < bytes.size() ? std::uint32_t{static_cast<unsigned char>(bytes[i])} : 0U;
    };
    const std::size_t start = out.size();
    out.resize(start + (bytes.size() + 2) / 3 * 4, '=');
    char* to = out.data() + start;
    for (std::size_t i = 0; i < bytes.size(); i += 3, to += 4) {
        const std::uint32_t group = byteAt(i) << 16U | byteAt(i + 1) << 8U | byteAt(i + 2);
        to[0] = digits[group >> 18U];
        to[1] = digits[group >> 12U & 63U];
        if (i + 1 < bytes.size()) {
            to[2] = digits[group >> 6U & 63U];
        }
        if (i + 2 < bytes.size()) {
            to[3] = digits[group & 63U];
        }
    }
}

} // namespace

Data EncodedData::decoded() const {
    return encoding_ == Encoding::raw ? stored_ : Data::owning(decodeBase64(stored_.bytes()));
}

void EncodedData::appendBase64(std::string& out) const { encodeBase64(decoded().bytes(), out); }

bool operator==(const EncodedData& a, const EncodedData& b) {
    const bool sameEncoding = a.encoding_ == b.encoding_;
    return sameEncoding && a.stored_ == b.stored_ ? true : a.decoded() == b.decoded();
}

} // namespace platform
