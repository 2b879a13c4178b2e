#include "Platform/Foundation/WhiteSpace.h"

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {

namespace {

bool isTwoByteWhiteSpace(std::string_view character) {
    return character == "\u0085" || character == "\u00A0";
}

bool isThreeByteWhiteSpace(std::string_view character) {
    return character == "\u1680" || (character >= "\u2000" && character <= "\u200A") || character == "\u2028" ||
           character == "\u2029" || character == "\u202F" || character == "\u205F" || character == "\u3000";
}

std::size_t trailingWhiteSpace(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    if (isAsciiWhiteSpace(text.back())) {
        return 1;
    }
    if (text.size() >= 2 && isTwoByteWhiteSpace(text.substr(text.size() - 2))) {
        return 2;
    }
    return text.size() >= 3 && isThreeByteWhiteSpace(text.substr(text.size() - 3)) ? 3 : 0;
}

/// Collapses a text in place: what is written never overtakes what is read.
class Collapser {
  public:
    explicit Collapser(std::string& text) : text_(text), in_(text.data()), end_(in_ + text.size()), out_(text.data()) {}

    void run() {
        while (in_ < end_) {
            copyBlocks();
            step();
        }
        if (isAfterBlank_ && out_ > text_.data()) {
            --out_;
        }
        text_.resize(static_cast<std::size_t>(out_ - text_.data()));
    }

  private:
    /// Copies blocks as long as they need no change: where nothing but single blanks can be white space. Then, of the
    /// next block, what stands before that.
    void copyBlocks() {
#if defined(__SSE2__)
        constexpr std::ptrdiff_t blockSize = 16;
        for (; end_ - in_ >= blockSize; in_ += blockSize, out_ += blockSize) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in_));
            const auto are = [bytes](int byte) {
                return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(byte)));
            };
            const auto bits = [](__m128i mask) { return static_cast<std::uint32_t>(_mm_movemask_epi8(mask)); };
            const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
            const __m128i leads = _mm_or_si128(_mm_or_si128(are(0xC2), are(0xE1)), _mm_or_si128(are(0xE2), are(0xE3)));
            const std::uint32_t blanks = bits(are(' '));
            const std::uint32_t blanksAfterBlanks = blanks & (blanks << 1U | (isAfterBlank_ ? 1U : 0U));
            if (const std::uint32_t changes = bits(_mm_or_si128(controls, leads)) | blanksAfterBlanks; changes != 0) {
                copy(static_cast<std::size_t>(std::countr_zero(changes)));
                return;
            }
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out_), bytes);
            isAfterBlank_ = (blanks >> (blockSize - 1)) != 0;
        }
#endif
    }

    void copy(std::size_t size) {
        if (size != 0) {
            std::memmove(out_, in_, size);
            in_ += size;
            out_ += size;
            isAfterBlank_ = out_[-1] == ' ';
        }
    }

    /// Takes one character of white space, or one byte of anything else.
    void step() {
        if (in_ == end_) {
            return;
        }
        const std::size_t size = leadingWhiteSpace({in_, static_cast<std::size_t>(end_ - in_)});
        if (size == 0) {
            copy(1);
            return;
        }
        if (!isAfterBlank_) {
            *out_++ = ' ';
        }
        in_ += size;
        isAfterBlank_ = true;
    }

    std::string& text_;
    const char* in_;
    const char* end_;
    char* out_;
    /// Or at the beginning.
    bool isAfterBlank_ = true;
};

} // namespace

std::size_t leadingWhiteSpace(std::string_view text) {
    if (text.empty() || !mayBeginWhiteSpace(text.front())) {
        return 0;
    }
    if (isAsciiWhiteSpace(text.front())) {
        return 1;
    }
    if (isTwoByteWhiteSpace(text.substr(0, 2))) {
        return 2;
    }
    return isThreeByteWhiteSpace(text.substr(0, 3)) ? 3 : 0;
}

std::string_view trimmed(std::string_view text) {
    while (const std::size_t size = leadingWhiteSpace(text)) {
        text.remove_prefix(size);
    }
    while (const std::size_t size = trailingWhiteSpace(text)) {
        text.remove_suffix(size);
    }
    return text;
}

void collapseWhiteSpace(std::string& text) {
    Collapser(text).run();
}

} // namespace platform
