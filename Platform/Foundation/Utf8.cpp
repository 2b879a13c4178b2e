#include "Platform/Foundation/Utf8.h"

#include <cstdint>

namespace platform {

namespace {

/// What a lead byte asks of the bytes after it; only the second byte's range is ever narrower than 80…BF.
struct Lead {
    std::size_t length;
    std::uint8_t secondLowest;
    std::uint8_t secondHighest;
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

} // namespace

Utf8Sequence leadingUtf8Sequence(std::string_view text) {
    const auto byteAt = [text](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
    const Lead lead = leadOf(byteAt(0));
    if (lead.length == 0) {
        return {1, false};
    }
    for (std::size_t index = 1; index < lead.length; ++index) {
        const std::uint8_t lowest = index == 1 ? lead.secondLowest : 0x80;
        const std::uint8_t highest = index == 1 ? lead.secondHighest : 0xBF;
        if (index == text.size() || byteAt(index) < lowest || byteAt(index) > highest) {
            return {index, false};
        }
    }
    return {lead.length, true};
}

} // namespace platform
