#include "Platform/Foundation/PercentEncoding.h"

#include <algorithm>
#include <array>
#include <optional>

namespace platform {

namespace {

constexpr std::size_t escapeLength = 3;

/// Returns the byte for the "%HH" at `at`; nothing for any other text there.
std::optional<char> escapeAt(std::string_view text, std::size_t at) {
    if (text[at] != '%' || text.size() - at < escapeLength) {
        return std::nullopt;
    }
    const unsigned high = hexadecimalValue(text[at + 1]);
    const unsigned low = hexadecimalValue(text[at + 2]);
    return high < 16 && low < 16 ? std::optional(static_cast<char>(high << 4U | low)) : std::nullopt;
}

} // namespace

void appendPercentEncoded(std::string& out, std::string_view text, const AsciiSet& allowed) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::size_t at = 0;
    while (true) {
        const std::size_t runEnd = allowed.endOfRun(text, at);
        out += text.substr(at, runEnd - at);
        if (runEnd == text.size()) {
            return;
        }
        const auto byte = static_cast<unsigned char>(text[runEnd]);
        const std::array<char, escapeLength> escape = {'%', digits[byte >> 4U], digits[byte & 0xFU]};
        out.append(escape.data(), escape.size());
        at = runEnd + 1;
    }
}

std::string percentDecoded(std::string_view text) {
    std::string out(text.substr(0, text.find('%')));
    std::size_t at = out.size();
    while (at < text.size()) {
        const auto byte = escapeAt(text, at);
        out += byte.value_or(text[at]);
        at += byte ? escapeLength : 1;
    }
    return out;
}

bool isPercentEncoded(std::string_view text, const AsciiSet& allowed) {
    std::size_t at = allowed.endOfRun(text, 0);
    while (at < text.size()) {
        if (!escapeAt(text, at)) {
            return false;
        }
        at = allowed.endOfRun(text, at + escapeLength);
    }
    return true;
}

} // namespace platform
