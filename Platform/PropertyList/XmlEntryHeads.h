// The heads of the entries that records are made of.
//
// A head is what stands between the value of one dictionary entry and the next one's, up to the value's start tag:
//
//     ⏎⇥⇥<key>Name</key>⏎⇥⇥<string>
//
// In a list of records the same few heads come again and again, to the byte and in the same order. One that has been
// read before is recognised by comparing it with the one or two that came after its predecessor earlier; reading it
// again token by token would take ten times as long. A table of the heads that came last is all that is kept.
#pragma once

#include "Platform/PropertyList/KeySelection.h"
#include "Platform/PropertyList/XmlTag.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace platform {

class XmlEntryHeads {
  public:
    struct Head {
        std::string_view bytes;
        /// The key, which means what is typed.
        FingerprintedKey key;
        /// The value's start tag, and how long it is.
        XmlTag tag;
        std::size_t tagSize = 0;
    };

    /// Stands for what precedes the first entry of a dictionary.
    static constexpr std::uint8_t start = 64;
    /// Stands for a head that is not in the table.
    static constexpr std::uint8_t none = 65;

    const Head& operator[](std::uint8_t index) const { return heads_[index]; }

    /// The head at `p`, if it is one of those that are likely after `previous`.
    std::uint8_t match(std::uint8_t previous, const char* p, const char* end) const {
        const Successors next = next_[previous];
        return isAt(next.last, p, end) ? next.last : isAt(next.beforeLast, p, end) ? next.beforeLast : none;
    }

    /// Where a head of these bytes and this key is, if it is in the table at all.
    std::uint8_t find(std::string_view bytes, std::string_view key) const { return slot(bytes, key); }

    /// Takes note of a head that has been read after `previous`. Its bytes stay where they are.
    std::uint8_t note(std::uint8_t previous, const Head& head) {
        const std::uint8_t index = slot(head.bytes, head.key.text());
        if (heads_[index].bytes != head.bytes) {
            heads_[index] = head;
            next_[index] = {};
        }
        Successors& next = next_[previous];
        if (next.last != index) {
            next = {index, next.last};
        }
        return index;
    }

  private:
    /// The heads that came after another, the last one first.
    struct Successors {
        std::uint8_t last = none;
        std::uint8_t beforeLast = none;
    };

    bool isAt(std::uint8_t index, const char* p, const char* end) const {
        if (index == none) {
            return false;
        }
        const std::string_view bytes = heads_[index].bytes;
        return static_cast<std::size_t>(end - p) > bytes.size() && std::memcmp(p, bytes.data(), bytes.size()) == 0;
    }

    /// The place of a head: the one that it has, else a free one near its hash, else the one of another head.
    std::uint8_t slot(std::string_view bytes, std::string_view key) const {
        constexpr std::size_t probes = 8;
        std::size_t hash = bytes.size();
        for (const char character : key.substr(0, 16)) {
            hash = 31 * hash + static_cast<unsigned char>(character);
        }
        for (std::size_t probe = 0; probe < probes; ++probe) {
            const std::size_t index = (hash + probe) % start;
            if (heads_[index].bytes.empty() || heads_[index].bytes == bytes) {
                return static_cast<std::uint8_t>(index);
            }
        }
        return static_cast<std::uint8_t>(hash % start);
    }

    std::array<Head, start> heads_{};
    std::array<Successors, none + 1> next_{};
};

} // namespace platform
