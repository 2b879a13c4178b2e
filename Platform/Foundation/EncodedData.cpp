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

/// The two digits of every group of twelve bits.
constexpr auto digitPairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        pairs[i] = {digits[i >> 6U], digits[i & 63U]};
    }
    return pairs;
}();

void encodeBase64(std::string_view bytes, std::string& out) {
    const std::size_t start = out.size();
    out.resize(start + (bytes.size() + 2) / 3 * 4, '=');
    char* to = out.data() + start;
    const auto* from = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto put = [&to](std::uint32_t twelveBits) {
        to[0] = digitPairs[twelveBits][0];
        to[1] = digitPairs[twelveBits][1];
        to += 2;
    };
    const std::size_t rest = bytes.size() % 3;
    for (const auto* end = from + (bytes.size() - rest); from != end; from += 3) {
        const std::uint32_t group = std::uint32_t{from[0]} << 16U | std::uint32_t{from[1]} << 8U | from[2];
        put(group >> 12U);
        put(group & 0xFFFU);
    }
    if (rest == 1) {
        put(std::uint32_t{from[0]} << 4U);
    } else if (rest == 2) {
        put(std::uint32_t{from[0]} << 4U | std::uint32_t{from[1]} >> 4U);
        *to = digits[(from[1] & 15U) << 2U];
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
