#include "Platform/Foundation/Utf8.h"

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

/// Passes over characters of one and two bytes from `p` on, sixteen bytes at a time, and stops at or before anything
/// else.
const char* skipShortCharacters(const char* p, const char* end) {
#if defined(__SSE2__)
    constexpr std::ptrdiff_t blockSize = 16;
    // 1 where the block before ended with a lead, whose trail is to come.
    std::uint32_t cut = 0;
    for (; end - p >= blockSize; p += blockSize) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const auto bits = [](__m128i mask) { return static_cast<std::uint32_t>(_mm_movemask_epi8(mask)); };
        // As signed numbers: trails are the least, then come the leads of two bytes, those of more, and ASCII.
        const auto below = [&](int byte) {
            return bits(_mm_cmplt_epi8(bytes, _mm_set1_epi8(static_cast<char>(byte))));
        };
        const std::uint32_t trails = below(0xC0);
        const std::uint32_t leads = below(0xE0) & ~below(0xC2);
        if (bits(bytes) != (trails | leads) || trails != ((leads << 1U | cut) & 0xFFFFU)) {
            break;
        }
        cut = leads >> (blockSize - 1);
    }
    p -= cut;
#endif
    while (p < end && static_cast<unsigned char>(*p) < 0x80) {
        ++p;
    }
    return p;
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

bool isUtf8(std::string_view text) {
    const char* p = text.data();
    const char* const end = p + text.size();
    while ((p = skipShortCharacters(p, end)) < end) {
        const Utf8Sequence sequence = leadingUtf8Sequence({p, static_cast<std::size_t>(end - p)});
        if (!sequence.isCharacter) {
            return false;
        }
        p += sequence.length;
    }
    return true;
}

} // namespace platform
