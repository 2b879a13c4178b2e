#include "Platform/PropertyList/BinaryLayout.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

constexpr unsigned greatestWidth = 8;

bool isWidth(unsigned width) {
    return width >= 1 && width <= greatestWidth;
}

/// What a marker byte says.
struct Marker {
    enum class Unit : std::uint8_t { none, byte, utf16, reference, entry };

    PropertyListKind kind = PropertyListKind::null;
    bool isKnown = false;
    /// Whether the size is not `count` but follows the marker as an integer object.
    bool hasLongCount = false;
    std::uint8_t count = 0;
    Unit unit = Unit::none;
};

constexpr std::array<Marker, 256> makeMarkers() {
    using Kind = PropertyListKind;
    using Unit = Marker::Unit;
    std::array<Marker, 256> markers;
    const auto set = [&markers](unsigned byte, Kind kind, unsigned count, Unit unit) {
        markers[byte] = {kind, true, false, static_cast<std::uint8_t>(count), unit};
    };
    const auto setSized = [&markers, set](unsigned high, Kind kind, Unit unit) {
        for (unsigned count = 0; count < 16; ++count) {
            set(high << 4U | count, kind, count, unit);
        }
        markers[high << 4U | 15U].hasLongCount = true;
    };
    set(0x00, Kind::null, 0, Unit::none);
    set(0x08, Kind::boolean, 0, Unit::none);
    set(0x09, Kind::boolean, 1, Unit::none);
    for (unsigned power = 0; power <= 4; ++power) {
        set(0x10 | power, Kind::integer, 1U << power, Unit::byte);
    }
    set(0x22, Kind::real, 4, Unit::byte);
    set(0x23, Kind::real, 8, Unit::byte);
    set(0x33, Kind::date, 8, Unit::byte);
    setSized(0x4, Kind::data, Unit::byte);
    setSized(0x5, Kind::string, Unit::byte);
    setSized(0x6, Kind::string, Unit::utf16);
    for (unsigned last = 0; last < 16; ++last) {
        set(0x80 | last, Kind::uid, last + 1, Unit::byte);
    }
    setSized(0xA, Kind::array, Unit::reference);
    setSized(0xC, Kind::set, Unit::reference);
    setSized(0xD, Kind::dictionary, Unit::entry);
    return markers;
}

constexpr std::array<Marker, 256> markers = makeMarkers();

} // namespace

std::optional<BinaryLayout> BinaryLayout::read(std::string_view file) {
    if (!file.starts_with("bplist0") || file.size() < headerSize + trailerSize) {
        return std::nullopt;
    }
    BinaryLayout layout;
    layout.file_ = file;
    const std::uint64_t trailer = file.size() - trailerSize;
    layout.offsetSize_ = static_cast<unsigned char>(file[trailer + 6]);
    layout.referenceSize_ = static_cast<unsigned char>(file[trailer + 7]);
    layout.objectCount_ = layout.number(trailer + 8, 8);
    layout.rootObject_ = layout.number(trailer + 16, 8);
    layout.objectsEnd_ = layout.number(trailer + 24, 8);

    // Every object takes at least a byte, which bounds what a lying count can make us allocate.
    if (!isWidth(layout.offsetSize_) || !isWidth(layout.referenceSize_) || layout.objectsEnd_ < headerSize ||
        layout.objectsEnd_ > trailer || layout.rootObject_ >= layout.objectCount_ ||
        layout.objectCount_ > layout.objectBytes() ||
        layout.objectCount_ > (trailer - layout.objectsEnd_) / layout.offsetSize_) {
        return std::nullopt;
    }
    layout.unitSizes_ = {0, 1, 2, layout.referenceSize_, 2 * layout.referenceSize_};
    return layout;
}

const char* BinaryLayout::whereabouts(std::uint64_t index) const {
    return file_.data() + std::min(objectOffset(index), objectsEnd_);
}

BinaryObject BinaryLayout::object(std::uint64_t index) const {
    const std::uint64_t offset = objectOffset(index);
    if (offset < headerSize || offset >= objectsEnd_) {
        return {};
    }
    const Marker marker = markers[static_cast<unsigned char>(file_[offset])];
    std::uint64_t count = marker.count;
    std::uint64_t payload = offset + 1;
    if (marker.hasLongCount) {
        const unsigned sizeMarker = static_cast<unsigned char>(file_[payload]);
        if (sizeMarker < 0x10 || sizeMarker > 0x13) {
            return {};
        }
        const unsigned width = 1U << (sizeMarker & 0x0FU);
        count = number(payload + 1, width);
        payload += 1 + width;
    }
    const unsigned unitSize = unitSizes_[static_cast<std::size_t>(marker.unit)];
    // A count no greater than the file, times 16 at most, does not overflow.
    if (!marker.isKnown || payload > objectsEnd_ || count > objectsEnd_ || count * unitSize > objectsEnd_ - payload) {
        return {};
    }
    return {marker.kind, unitSize, payload, count};
}

} // namespace platform
