#include "Platform/Foundation/XMLCharacters.h"

#include "Platform/Foundation/Utf8.h"

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {

namespace {

constexpr bool isForbiddenControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 && character != '\t' && character != '\n' && character != '\r';
}

bool holdsForbiddenControl(std::string_view text) {
    const char* p = text.data();
    const char* const end = p + text.size();
#if defined(__SSE2__)
    for (constexpr std::ptrdiff_t blockSize = 16; end - p >= blockSize; p += blockSize) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const auto are = [bytes](char byte) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte)); };
        const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
        const __m128i allowed = _mm_or_si128(_mm_or_si128(are('\n'), are('\r')), are('\t'));
        if (_mm_movemask_epi8(_mm_andnot_si128(allowed, controls)) != 0) {
            return true;
        }
    }
#endif
    while (p < end && !isForbiddenControl(*p)) {
        ++p;
    }
    return p < end;
}

} // namespace

bool isXmlText(std::string_view text) {
    return !holdsForbiddenControl(text) && isUtf8(text) && text.find("\uFFFE") == std::string_view::npos &&
           text.find("\uFFFF") == std::string_view::npos;
}

} // namespace platform
