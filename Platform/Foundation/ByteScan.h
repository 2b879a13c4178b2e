// Searches in text that look at many bytes at a time, without a branch for each.
//
// On processors with SSE2 they use it; elsewhere the same masks are made byte by byte.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {

/// For each of the 32 bytes at `p` a bit, the first one's the lowest: whether it is a '<' or a '&'.
inline std::uint32_t xmlMarks(const char* p) {
#if defined(__SSE2__)
    const auto marksIn = [p](std::size_t index) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * index));
        const __m128i marks =
            _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('<')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&')));
        return static_cast<std::uint32_t>(_mm_movemask_epi8(marks));
    };
    return marksIn(0) | marksIn(1) << 16U;
#else
    std::uint32_t marks = 0;
    for (std::size_t index = 0; index < 32; ++index) {
        marks |= std::uint32_t{p[index] == '<' || p[index] == '&'} << index;
    }
    return marks;
#endif
}

/// The first '<' or '&' from `p` on, or the end.
inline const char* findXmlMark(const char* p, const char* end) {
    for (constexpr std::ptrdiff_t blockSize = 32; end - p >= blockSize; p += blockSize) {
        if (const std::uint32_t marks = xmlMarks(p); marks != 0) {
            return p + std::countr_zero(marks);
        }
    }
    while (p < end && *p != '<' && *p != '&') {
        ++p;
    }
    return p;
}

/// Whether the 64 bytes at `p` are all ASCII.
inline bool isAsciiBlock(const char* p) {
#if defined(__SSE2__)
    const auto load = [p](std::size_t index) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * index));
    };
    return _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(load(0), load(1)), _mm_or_si128(load(2), load(3)))) == 0;
#else
    unsigned char any = 0;
    for (std::size_t index = 0; index < 64; ++index) {
        any |= static_cast<unsigned char>(p[index]);
    }
    return any < 0x80;
#endif
}

constexpr bool isXmlBlank(char character) {
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

/// Passes over blanks from `p` on.
inline const char* skipXmlBlanks(const char* p, const char* end) {
#if defined(__SSE2__)
    constexpr std::ptrdiff_t blockSize = 16;
    for (; end - p >= blockSize; p += blockSize) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i breaks =
            _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
        const __m128i gaps =
            _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')));
        const auto blanks = static_cast<std::uint16_t>(_mm_movemask_epi8(_mm_or_si128(breaks, gaps)));
        if (const int count = std::countr_one(blanks); count < blockSize) {
            return p + count;
        }
    }
#endif
    while (p < end && isXmlBlank(*p)) {
        ++p;
    }
    return p;
}

} // namespace platform
