// The first byte of an object in a binary property list.
//
//   00 null   08 false   09 true
//   10…14 integer of 1, 2, 4, 8, 16 bytes   22, 23 real of 4, 8 bytes   33 date
//   4n data, n bytes   5n text, n bytes of ASCII   6n text, n units of UTF-16
//   80…8F UID of 1 to 16 bytes
//   An array, n references   Cn set, n references   Dn dictionary, n references to keys and then n to values
//
// Where n is 15, the size follows as an integer object.
#pragma once

#include "Platform/PropertyList/PropertyListSource.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform {

struct BinaryMarker {
    enum class Unit : std::uint8_t { unknown, none, byte, utf16, reference, entry };
    static constexpr std::size_t unitCount = 6;
    static constexpr std::uint8_t longCount = 0xFF;

    PropertyListKind kind = PropertyListKind::null;
    /// What the payload is made of; `unknown` if there is no such object.
    Unit unit = Unit::unknown;
    /// Of how many; for booleans 0 or 1.
    std::uint8_t count = 0;
};

constexpr std::array<BinaryMarker, 256> makeBinaryMarkers() {
    using Kind = PropertyListKind;
    using Unit = BinaryMarker::Unit;
    std::array<BinaryMarker, 256> markers;
    const auto set = [&markers](unsigned marker, Kind kind, Unit unit, unsigned count) {
        markers[marker] = {kind, unit, static_cast<std::uint8_t>(count)};
    };
    const auto setSized = [set](unsigned marker, Kind kind, Unit unit) {
        for (unsigned count = 0; count < 15; ++count) {
            set(marker | count, kind, unit, count);
        }
        set(marker | 15U, kind, unit, BinaryMarker::longCount);
    };
    set(0x00, Kind::null, Unit::none, 0);
    set(0x08, Kind::boolean, Unit::none, 0);
    set(0x09, Kind::boolean, Unit::none, 1);
    for (unsigned power = 0; power <= 4; ++power) {
        set(0x10 | power, Kind::integer, Unit::byte, 1U << power);
    }
    set(0x22, Kind::real, Unit::byte, 4);
    set(0x23, Kind::real, Unit::byte, 8);
    set(0x33, Kind::date, Unit::byte, 8);
    setSized(0x40, Kind::data, Unit::byte);
    setSized(0x50, Kind::string, Unit::byte);
    setSized(0x60, Kind::string, Unit::utf16);
    for (unsigned last = 0; last < 16; ++last) {
        set(0x80 | last, Kind::uid, Unit::byte, last + 1);
    }
    setSized(0xA0, Kind::array, Unit::reference);
    setSized(0xC0, Kind::set, Unit::reference);
    setSized(0xD0, Kind::dictionary, Unit::entry);
    return markers;
}

inline constexpr std::array<BinaryMarker, 256> binaryMarkers = makeBinaryMarkers();

} // namespace platform
