// Searches in XML that look at many bytes at a time, without a branch for each.
//
// On processors with SSE2 they use it; elsewhere the same masks are made byte by byte.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {

/// A walk over the marks of a text, which are its '<' and '&'.
///
/// The marks of 64 bytes are found at once, as bits of a word: going from one to the next then is a step of arithmetic
/// that does not wait for memory, and stretches without marks pass at the speed of memory. Nothing is looked at before
/// it is asked for.
class MarkIterator {
  public:
    /// At the first mark that is not before `p`.
    MarkIterator(const char* p, const char* end) : next_(p), end_(end) {}

    /// The mark, or the end of the text.
    const char* position() {
        if (marks_ == 0) {
            findMarks();
        }
        return block_ + std::countr_zero(marks_);
    }

    /// Goes to the mark after this one, whose position has been asked for.
    void advance() { marks_ &= marks_ - 1; }

    /// Goes to the first mark that is not before `p`, wherever that is.
    void moveTo(const char* p) {
        next_ = p;
        marks_ = 0;
    }

  private:
    static constexpr std::ptrdiff_t blockSize = 64;

    /// Finds the marks of the next block that has any.
    void findMarks() {
        for (; end_ - next_ >= blockSize; next_ += blockSize) {
            marks_ = marksOf(next_);
            if (marks_ != 0) {
                block_ = next_;
                next_ += blockSize;
                return;
            }
        }
        findLastMarks();
    }

    /// The same for the last bytes, which are no whole block.
    void findLastMarks() {
        std::array<char, blockSize> rest{};
        std::memcpy(rest.data(), next_, static_cast<std::size_t>(end_ - next_));
        marks_ = marksOf(rest.data());
        block_ = next_;
        next_ = end_;
        if (marks_ == 0) {
            marks_ = 1;
            block_ = end_;
        }
    }

    static std::uint64_t marksOf(const char* p) {
        std::uint64_t marks = 0;
#if defined(__SSE2__)
        const auto marksIn = [p](std::size_t index) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * index));
            return _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('<')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&')));
        };
        const auto bits = [](__m128i found, std::size_t index) {
            return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(found))} << 16 * index;
        };
        const __m128i a = marksIn(0);
        const __m128i b = marksIn(1);
        const __m128i c = marksIn(2);
        const __m128i d = marksIn(3);
        if (_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) != 0) {
            marks = bits(a, 0) | bits(b, 1) | bits(c, 2) | bits(d, 3);
        }
#else
        for (std::size_t index = 0; index < blockSize; ++index) {
            marks |= std::uint64_t{p[index] == '<' || p[index] == '&'} << index;
        }
#endif
        return marks;
    }

    /// Where the marks are still to be found; the block before holds those that are known.
    const char* next_;
    const char* end_;
    const char* block_ = nullptr;
    std::uint64_t marks_ = 0;
};

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
