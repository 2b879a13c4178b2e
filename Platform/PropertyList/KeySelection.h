// The keys that a reader of a dictionary wants, and the places of their values.
//
// Comparing a key costs about a nanosecond for each wanted one: of every wanted key a fingerprint of eight bytes is
// made once, which is the whole key if it is shorter than that.
#pragma once

#include "Platform/PropertyList/PropertyListSource.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

namespace platform {

/// A key as it is compared: by a fingerprint that is made once, before the text itself.
class FingerprintedKey {
  public:
    FingerprintedKey() = default;
    explicit FingerprintedKey(std::string_view text) : text_(text), fingerprint_(fingerprintOf(text)) {}

    std::string_view text() const { return text_; }

    bool is(std::string_view text, std::uint64_t fingerprint) const {
        return fingerprint_ == fingerprint && text_.size() == text.size() &&
               (text.size() <= wholeSize || text_ == text);
    }

    static std::uint64_t fingerprintOf(std::string_view text) {
        const std::size_t size = text.size();
        if (size > wholeSize) {
            return load<std::uint64_t>(text, 0) + 31 * load<std::uint64_t>(text, size - sizeof(std::uint64_t));
        }
        if (size >= sizeof(std::uint32_t)) {
            return std::uint64_t{load<std::uint32_t>(text, 0)} << 32U | load<std::uint32_t>(text, size - 4);
        }
        if (size >= sizeof(std::uint16_t)) {
            return std::uint64_t{load<std::uint16_t>(text, 0)} << 16U | load<std::uint16_t>(text, size - 2);
        }
        return size == 1 ? load<std::uint8_t>(text, 0) : 0;
    }

  private:
    /// The longest text that its fingerprint tells from every other one of the same length.
    static constexpr std::size_t wholeSize = 8;

    template <typename Number>
    static Number load(std::string_view text, std::size_t offset) {
        Number number = 0;
        std::memcpy(&number, text.data() + offset, sizeof number);
        return number;
    }

    std::string_view text_;
    std::uint64_t fingerprint_ = 0;
};

class KeySelection {
  public:
    static constexpr std::size_t greatestCount = 64;

    /// At most `greatestCount` keys, which are all different and outlive the selection.
    explicit KeySelection(std::span<const std::string_view> keys) : keys_(keys) {
        for (std::size_t index = 0; index < keys_.size(); ++index) {
            fingerprints_[index] = FingerprintedKey::fingerprintOf(keys_[index]);
        }
    }

    /// If `key` is wanted, its value lies at `place`; what was told before of this key no longer counts.
    void offer(const FingerprintedKey& key, PropertyListPlace place) {
        for (std::size_t index = 0; index < keys_.size(); ++index) {
            if (key.is(keys_[index], fingerprints_[index])) {
                places_[index] = place;
                found_ |= std::uint64_t{1} << index;
                return;
            }
        }
    }

    bool isFound(std::size_t index) const { return (found_ >> index & 1U) != 0; }
    /// Where the value of the wanted key `index` lies, if it is found.
    PropertyListPlace place(std::size_t index) const { return places_[index]; }

  private:
    std::span<const std::string_view> keys_;
    std::uint64_t found_ = 0;
    std::array<std::uint64_t, greatestCount> fingerprints_;
    std::array<PropertyListPlace, greatestCount> places_;
};

} // namespace platform
