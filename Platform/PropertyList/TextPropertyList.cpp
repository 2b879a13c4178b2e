#include "Platform/PropertyList/TextPropertyList.h"

#include "Platform/Foundation/Unicode.h"
#include "Platform/Foundation/Utf8.h"
#include "Platform/PropertyList/KeySelection.h"

#include <utility>

namespace platform {

std::unique_ptr<const PropertyListSource> TextPropertyList::parse(const Data& text) {
    const TextScanner scanner(text.bytes());
    const char* const root = scanner.skipBlanks(text.bytes().data());
    const char* p = root;
    if (p != nullptr) {
        p = scanner.skipValue(p, 0);
    }
    if (p != nullptr) {
        p = scanner.skipBlanks(p);
    }
    if (p == nullptr || p != scanner.end() || !isUtf8(text.bytes())) {
        return nullptr;
    }
    return std::unique_ptr<const PropertyListSource>(new TextPropertyList(text, root));
}

PropertyListPlace TextPropertyList::placeOf(const char* p) const {
    const auto offset = static_cast<std::uint64_t>(p - text_.bytes().data());
    switch (*p) {
    case '{':
        return {PropertyListKind::dictionary, offset};
    case '(':
        return {PropertyListKind::array, offset};
    case '<':
        return {PropertyListKind::data, offset};
    default:
        return {PropertyListKind::string, offset};
    }
}

std::string TextPropertyList::string(Place place) const {
    return scanner_.string(position(place.offset()));
}

EncodedData TextPropertyList::data(Place place) const {
    return {Data::owning(scanner_.data(position(place.offset()))), EncodedData::Encoding::raw};
}

// No value of this form is of these kinds.

std::optional<std::int64_t> TextPropertyList::integer(Place /*place*/) const {
    return std::nullopt;
}

double TextPropertyList::number(Place /*place*/) const {
    return 0;
}

bool TextPropertyList::boolean(Place /*place*/) const {
    return false;
}

Date TextPropertyList::date(Place /*place*/) const {
    return {};
}

PropertyListSource::Cursor TextPropertyList::walk(Place container) const {
    const char* const content = scanner_.skipBlanks(position(container.offset()) + 1);
    return {.next = static_cast<std::uint64_t>(content - text_.bytes().data())};
}

std::optional<PropertyListPlace> TextPropertyList::nextElement(Cursor& cursor) const {
    const char* p = position(cursor.next);
    if (cursor.isAtValue) {
        p = scanner_.skipBlanks(scanner_.skipValue(p, 0));
        if (scanner_.isAt(p, ',')) {
            p = scanner_.skipMark(p, ',');
        }
    }
    cursor.next = static_cast<std::uint64_t>(p - text_.bytes().data());
    cursor.isAtValue = !scanner_.isAt(p, ')');
    return cursor.isAtValue ? std::optional(placeOf(p)) : std::nullopt;
}

bool TextPropertyList::nextEntry(Cursor& cursor, Entry& entry) const {
    const char* p = position(cursor.next);
    if (cursor.isAtValue) {
        p = scanner_.skipMark(scanner_.skipValue(p, 0), ';');
    }
    cursor.isAtValue = !scanner_.isAt(p, '}');
    if (cursor.isAtValue) {
        entry.key = scanner_.string(p);
        p = scanner_.skipMark(scanner_.skipString(p), '=');
        entry.value = placeOf(p);
    }
    cursor.next = static_cast<std::uint64_t>(p - text_.bytes().data());
    return cursor.isAtValue;
}

std::size_t TextPropertyList::arrayCount(Place array) const {
    std::size_t count = 0;
    for (Cursor cursor = walk(array); nextElement(cursor);) {
        ++count;
    }
    return count;
}

bool TextPropertyList::isArrayOfDictionaries(Place array) const {
    Cursor cursor = walk(array);
    while (const auto element = nextElement(cursor)) {
        if (element->kind() != PropertyListKind::dictionary) {
            return false;
        }
    }
    return true;
}

void TextPropertyList::select(Place dictionary, KeySelection& selection) const {
    Cursor cursor = walk(dictionary);
    Entry entry;
    while (nextEntry(cursor, entry)) {
        selection.offer(FingerprintedKey(entry.key), entry.value);
    }
}

} // namespace platform
