// Where the long elements of an XML property list end.
//
// Passing over a group of records takes a look at each of its bytes, unless its end is known. Checking the file comes
// by every end anyway, and the ends of the long elements are kept, with one fact of each that would need another look:
// at most 65,536 of either sort, a mebibyte in all, however long the file is. The file is divided into equal stretches,
// and of those that begin in the same one the longest is kept; what is not kept has to be looked for again, that is
// all.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

class XmlElementEnds {
  public:
    enum class Sort : std::uint8_t { container, data };

    struct End {
        /// Offset of the end tag.
        std::uint64_t offset = 0;
        /// Of containers: every child is a dictionary. Of data: there is nothing but base64 text.
        bool isUniform = false;
    };

    explicit XmlElementEnds(std::size_t fileSize) : fileSize_(fileSize) {
        while (fileSize >> shift_ > greatestCount) {
            ++shift_;
        }
        ends_.resize(2 * ((fileSize >> shift_) + 1));
    }

    /// Takes note of the element at `start`.
    void note(Sort sort, std::uint64_t start, End end) {
        const std::uint64_t length = end.offset - start;
        if (length < shortestLength || end.offset > greatestOffset) {
            return;
        }
        Note& note = ends_[slot(sort, start)];
        if (length > (note.end & greatestOffset) - note.start) {
            note.start = static_cast<std::uint32_t>(start);
            note.end = static_cast<std::uint32_t>(end.offset) | (end.isUniform ? uniform : 0);
        }
    }

    std::optional<End> find(Sort sort, std::uint64_t start) const {
        const Note& note = ends_[slot(sort, start)];
        if (note.end == 0 || note.start != start) {
            return std::nullopt;
        }
        return End{note.end & greatestOffset, (note.end & uniform) != 0};
    }

    /// The end of the container that begins next after `offset`, if it is near and known.
    std::optional<End> findNextContainer(std::uint64_t offset) const {
        constexpr std::uint64_t reach = 64;
        const Note& note = ends_[slot(Sort::container, std::min(offset + reach / 4, fileSize_))];
        if (note.start < offset || note.start - offset > reach) {
            return std::nullopt;
        }
        return End{note.end & greatestOffset, (note.end & uniform) != 0};
    }

  private:
    struct Note {
        std::uint32_t start = 0;
        /// With `uniform` in the highest bit; 0 if nothing is noted.
        std::uint32_t end = 0;
    };
    static constexpr std::uint32_t uniform = std::uint32_t{1} << 31U;
    static constexpr std::uint32_t greatestOffset = uniform - 1;

    /// Shorter elements are passed over as fast as they are looked up.
    static constexpr std::uint64_t shortestLength = 256;
    static constexpr std::size_t greatestCount = 65'535;

    std::size_t slot(Sort sort, std::uint64_t start) const {
        return 2 * static_cast<std::size_t>(start >> shift_) + static_cast<std::size_t>(sort);
    }

    std::uint64_t fileSize_;
    unsigned shift_ = 8;
    std::vector<Note> ends_;
};

} // namespace platform
