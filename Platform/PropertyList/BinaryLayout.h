// The bytes of a binary property list: trailer, offset table and the heads of objects.
//
//   "bplist0" and one more character
//   objects             each a marker byte (kind in the high half, size in the low one) and its payload
//   offset table        for every object, by number, its offset in the file
//   trailer, 32 bytes   6 unused, 1 width of an offset, 1 width of a reference (1 to 8 bytes each),
//                       8 number of objects, 8 number of the root object, 8 offset of the offset table
//
// All numbers are big-endian. A reference is the number of an object.
#pragma once

#include "Platform/PropertyList/BinaryMarker.h"
#include "Platform/PropertyList/PropertyListSource.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace platform {

/// An object's head: what it is and where its payload lies. Two words, so that it travels in registers.
class BinaryObject {
  public:
    /// Nothing that is known here, or nothing that lies before the offset table.
    BinaryObject() = default;
    BinaryObject(PropertyListKind kind, unsigned unitSize, std::uint64_t payload, std::uint64_t count)
        : bits_(payload << 16U | static_cast<unsigned>(kind) << 8U | unitSize << 1U | 1U), count_(count) {}

    bool isSound() const { return (bits_ & 1U) != 0; }
    PropertyListKind kind() const { return static_cast<PropertyListKind>(bits_ >> 8U & 0xFFU); }
    /// Elements, entries, characters or bytes; for booleans 0 or 1.
    std::uint64_t count() const { return count_; }
    /// Bytes for each of `count`: for texts 1 is ASCII and 2 UTF-16.
    unsigned unitSize() const { return bits_ >> 1U & 0x7FU; }
    /// Offset of the first byte after the head.
    std::uint64_t payload() const { return bits_ >> 16U; }
    std::uint64_t payloadSize() const { return count_ * unitSize(); }
    bool isAsciiText() const { return kind() == PropertyListKind::string && unitSize() == 1; }

  private:
    std::uint64_t bits_ = 0;
    std::uint64_t count_ = 0;
};

class BinaryLayout {
  public:
    /// The layout that the trailer of `file` tells, or nothing if it is none.
    static std::optional<BinaryLayout> read(std::string_view file);

    std::uint64_t objectCount() const { return objectCount_; }
    std::uint64_t rootObject() const { return rootObject_; }
    unsigned referenceSize() const { return referenceSize_; }
    /// Bytes that lie between the header and the offset table.
    std::uint64_t objectBytes() const { return objectsEnd_ - headerSize; }

    /// The head of the object `index`, which is below the count.
    BinaryObject object(std::uint64_t index) const {
        const std::uint64_t offset = objectOffset(index);
        if (offset < headerSize || offset >= objectsEnd_) {
            return {};
        }
        const BinaryMarker marker = binaryMarkers[static_cast<unsigned char>(file_[offset])];
        const unsigned unitSize = unitSizes_[static_cast<std::size_t>(marker.unit)];
        std::uint64_t count = marker.count;
        std::uint64_t payload = offset + 1;
        if (marker.count == BinaryMarker::longCount) {
            const unsigned width = longCountWidth(payload);
            if (width == 0) {
                return {};
            }
            count = number(payload + 1, width);
            payload += 1 + width;
        }
        // A count no greater than the file, times 16 at most, does not overflow.
        if (unitSize == unknownUnit || payload > objectsEnd_ || count > objectsEnd_ ||
            count * unitSize > objectsEnd_ - payload) {
            return {};
        }
        return {marker.kind, unitSize, payload, count};
    }

    /// Has the processor fetch the object `index` ahead of time.
    void prefetch(std::uint64_t index) const {
        __builtin_prefetch(file_.data() + std::min(objectOffset(index), objectsEnd_));
    }

    /// The same for what surrounds the object: of a record, what was written before it is the end of the record before,
    /// and its values follow.
    void prefetchAround(std::uint64_t index) const {
        const std::uint64_t offset = std::min(objectOffset(index), objectsEnd_);
        constexpr std::uint64_t before = 128;
        constexpr std::uint64_t line = 64;
        const std::uint64_t start = offset - std::min(before, offset);
        __builtin_prefetch(file_.data() + start);
        __builtin_prefetch(file_.data() + start + line);
        __builtin_prefetch(file_.data() + offset);
        __builtin_prefetch(file_.data() + std::min(offset + line, objectsEnd_));
    }

    /// The reference at `offset`, which lies before the offset table.
    std::uint64_t reference(std::uint64_t offset) const { return number(offset, referenceSize_); }

    /// The number of `width` (1 to 8) bytes at `offset`, which lies before the trailer: the trailer allows to load a
    /// whole word from there.
    std::uint64_t number(std::uint64_t offset, unsigned width) const {
        std::uint64_t word = 0;
        std::memcpy(&word, file_.data() + offset, sizeof word);
        if constexpr (std::endian::native == std::endian::little) {
            word = __builtin_bswap64(word);
        }
        return word >> (64 - 8 * width);
    }

    std::string_view bytes(std::uint64_t offset, std::uint64_t size) const { return {file_.data() + offset, size}; }

  private:
    static constexpr std::uint64_t headerSize = 8;
    static constexpr std::uint64_t trailerSize = 32;

    std::uint64_t objectOffset(std::uint64_t index) const {
        return number(objectsEnd_ + index * offsetSize_, offsetSize_);
    }

    /// The width of the integer object at `offset` that tells a size, 0 if it is none.
    unsigned longCountWidth(std::uint64_t offset) const {
        const unsigned marker = static_cast<unsigned char>(file_[offset]);
        return marker >= 0x10 && marker <= 0x13 ? 1U << (marker & 0x0FU) : 0;
    }

    std::string_view file_;
    unsigned offsetSize_ = 0;
    unsigned referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t rootObject_ = 0;
    /// Where the objects end and the offset table begins.
    std::uint64_t objectsEnd_ = 0;
    /// In bytes, by `BinaryMarker::Unit`.
    static constexpr unsigned unknownUnit = 0x7F;
    std::array<unsigned, BinaryMarker::unitCount> unitSizes_{};
};

} // namespace platform
