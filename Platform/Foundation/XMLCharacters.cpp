#include "Platform/Foundation/XMLCharacters.h"

#include "Platform/Foundation/Utf8.h"

#include <bit>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {

namespace {

constexpr bool isLineEndOrTab(char character) {
    return character == '\n' || character == '\r' || character == '\t';
}

constexpr bool isPlain(char character) {
    return (character >= ' ' && static_cast<unsigned char>(character) < 0x80) || isLineEndOrTab(character);
}

/// The first byte from `p` on that is a forbidden control or outside ASCII, or the end.
const char* skipPlain(const char* p, const char* end) {
#if defined(__SSE2__)
    for (constexpr std::ptrdiff_t blockSize = 16; end - p >= blockSize; p += blockSize) {
        // As signed numbers, bytes outside ASCII are below the blank too.
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const auto are = [bytes](char byte) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte)); };
        const __m128i allowed = _mm_or_si128(_mm_or_si128(are('\n'), are('\r')), are('\t'));
        const __m128i unusual = _mm_andnot_si128(allowed, _mm_cmplt_epi8(bytes, _mm_set1_epi8(' ')));
        if (const auto others = static_cast<std::uint32_t>(_mm_movemask_epi8(unusual)); others != 0) {
            return p + std::countr_zero(others);
        }
    }
#endif
    while (p < end && isPlain(*p)) {
        ++p;
    }
    return p;
}

/// The bytes of the character outside ASCII that `text` begins with; 0 where there is none that is allowed.
std::size_t leadingCharacter(std::string_view text) {
    const Utf8Sequence sequence = leadingUtf8Sequence(text);
    const std::string_view character = text.substr(0, sequence.length);
    return sequence.isCharacter && character != "\uFFFE" && character != "\uFFFF" ? sequence.length : 0;
}

} // namespace

bool isXmlText(std::string_view text) {
    const char* p = text.data();
    const char* const end = p + text.size();
    while ((p = skipPlain(p, end)) < end) {
        const bool isAscii = static_cast<unsigned char>(*p) < 0x80;
        const std::size_t size = isAscii ? 0 : leadingCharacter({p, static_cast<std::size_t>(end - p)});
        if (size == 0) {
            return false;
        }
        p += size;
    }
    return true;
}

} // namespace platform
