// The usual keys of a binary property list.
//
// Writers store every key once, and all records refer to that. A small table of the texts behind the references saves
// looking the same few keys up for every record again.
#pragma once

#include "Platform/PropertyList/BinaryLayout.h"
#include "Platform/PropertyList/KeySelection.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform {

class BinaryKeys {
  public:
    /// Takes note of the key that is the object `index`, if it is an ASCII text and its place is free.
    void add(std::uint64_t index, const BinaryLayout& layout) {
        Entry& entry = entries_[index % entries_.size()];
        if (entry.index != none) {
            return;
        }
        if (const BinaryObject object = layout.object(index); object.isAsciiText()) {
            entry = {index, FingerprintedKey(layout.bytes(object.payload(), object.count()))};
        }
    }

    /// The key that is the object `index`, or null if it is not in the table.
    const FingerprintedKey* find(std::uint64_t index) const {
        const Entry& entry = entries_[index % entries_.size()];
        return entry.index == index ? &entry.key : nullptr;
    }

  private:
    static constexpr std::uint64_t none = ~std::uint64_t{0};
    struct Entry {
        std::uint64_t index = none;
        FingerprintedKey key;
    };

    std::array<Entry, 128> entries_;
};

} // namespace platform
