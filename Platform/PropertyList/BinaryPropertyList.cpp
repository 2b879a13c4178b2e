#include "Platform/PropertyList/BinaryPropertyList.h"

#include "Platform/Foundation/Unicode.h"
#include "Platform/PropertyList/BinaryChecker.h"
#include "Platform/PropertyList/KeySelection.h"

#include <bit>
#include <cmath>
#include <string_view>
#include <utility>

namespace platform {

std::unique_ptr<const PropertyListSource> BinaryPropertyList::parse(const Data& file) {
    const std::optional<BinaryLayout> layout = BinaryLayout::read(file.bytes());
    if (!layout) {
        return nullptr;
    }
    std::unique_ptr<BinaryPropertyList> list(new BinaryPropertyList(file, *layout));
    if (!BinaryChecker(list->layout_, list->objects_, list->keys_).check()) {
        return nullptr;
    }
    return list;
}

PropertyListPlace BinaryPropertyList::root() const {
    return placeOf(layout_.rootObject());
}

std::string BinaryPropertyList::text(const BinaryObject& object) const {
    const std::string_view bytes = layout_.bytes(object.payload(), object.count() * object.unitSize());
    return object.unitSize() == 1 ? std::string(bytes) : utf8FromUtf16BigEndian(bytes);
}

std::string BinaryPropertyList::string(Place place) const {
    return text(object(place));
}

std::optional<std::int64_t> BinaryPropertyList::integer(Place place) const {
    const BinaryObject integer = object(place);
    if (integer.count() <= 8) {
        return static_cast<std::int64_t>(layout_.number(integer.payload(), static_cast<unsigned>(integer.count())));
    }
    const auto high = static_cast<std::int64_t>(layout_.number(integer.payload(), 8));
    const auto low = static_cast<std::int64_t>(layout_.number(integer.payload() + 8, 8));
    if (high != (low < 0 ? -1 : 0)) {
        return std::nullopt;
    }
    return low;
}

double BinaryPropertyList::number(Place place) const {
    const BinaryObject number = object(place);
    if (number.kind() == PropertyListKind::real) {
        return real(number);
    }
    if (number.count() <= 8) {
        return static_cast<double>(*integer(place));
    }
    const auto high = static_cast<std::int64_t>(layout_.number(number.payload(), 8));
    return std::ldexp(static_cast<double>(high), 64) + static_cast<double>(layout_.number(number.payload() + 8, 8));
}

double BinaryPropertyList::real(const BinaryObject& object) const {
    if (object.count() == sizeof(float)) {
        return std::bit_cast<float>(static_cast<std::uint32_t>(layout_.number(object.payload(), sizeof(float))));
    }
    return std::bit_cast<double>(layout_.number(object.payload(), sizeof(double)));
}

bool BinaryPropertyList::boolean(Place place) const {
    return object(place).count() != 0;
}

Date BinaryPropertyList::date(Place place) const {
    return {real(object(place))};
}

EncodedData BinaryPropertyList::data(Place place) const {
    const BinaryObject data = object(place);
    return {file_.slice(layout_.bytes(data.payload(), data.count())), EncodedData::Encoding::raw};
}

PropertyListSource::Cursor BinaryPropertyList::walk(Place container) const {
    const BinaryObject head = object(container);
    return {.next = head.payload(), .left = head.count(), .valueDistance = head.count() * layout_.referenceSize()};
}

std::optional<PropertyListPlace> BinaryPropertyList::nextElement(Cursor& cursor) const {
    if (cursor.left == 0) {
        return std::nullopt;
    }
    constexpr std::uint64_t prefetchDistance = 4;
    if (cursor.left > prefetchDistance) {
        layout_.prefetchAround(layout_.reference(cursor.next + prefetchDistance * layout_.referenceSize()));
    }
    const std::uint64_t index = layout_.reference(cursor.next);
    cursor.next += layout_.referenceSize();
    --cursor.left;
    return placeOf(index);
}

bool BinaryPropertyList::nextEntry(Cursor& cursor, Entry& entry) const {
    if (cursor.left == 0) {
        return false;
    }
    entry.key = string(placeOf(layout_.reference(cursor.next)));
    entry.value = placeOf(layout_.reference(cursor.next + cursor.valueDistance));
    cursor.next += layout_.referenceSize();
    --cursor.left;
    return true;
}

std::size_t BinaryPropertyList::arrayCount(Place array) const {
    return object(array).count();
}

bool BinaryPropertyList::isArrayOfDictionaries(Place array) const {
    Cursor cursor = walk(array);
    while (const auto element = nextElement(cursor)) {
        if (element->kind() != PropertyListKind::dictionary) {
            return false;
        }
    }
    return true;
}

void BinaryPropertyList::select(Place dictionary, KeySelection& selection) const {
    for (Cursor cursor = walk(dictionary); cursor.left > 0; --cursor.left, cursor.next += layout_.referenceSize()) {
        const std::uint64_t key = layout_.reference(cursor.next);
        const Place value = placeOf(layout_.reference(cursor.next + cursor.valueDistance));
        if (const FingerprintedKey* const known = keys_.find(key)) {
            selection.offer(*known, value);
        } else {
            selection.offer(FingerprintedKey(text(layout_.object(key))), value);
        }
    }
}

} // namespace platform
