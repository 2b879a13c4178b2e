#include "Platform/PropertyList/XmlPropertyList.h"

#include "Platform/PropertyList/KeySelection.h"
#include "Platform/PropertyList/XmlChecker.h"
#include "Platform/PropertyList/XmlScalars.h"
#include "Platform/PropertyList/XmlText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>

namespace platform {

namespace {

using Form = XmlTag::Form;
using Sort = XmlElementEnds::Sort;

/// In the order of `XmlElement`.
constexpr std::array<PropertyListKind, 12> kinds = {
    PropertyListKind::null,    PropertyListKind::null, PropertyListKind::string,  PropertyListKind::string,
    PropertyListKind::integer, PropertyListKind::real, PropertyListKind::boolean, PropertyListKind::boolean,
    PropertyListKind::date,    PropertyListKind::data, PropertyListKind::array,   PropertyListKind::dictionary,
};

PropertyListKind kindOf(XmlElement element) {
    return kinds[static_cast<std::size_t>(element)];
}

bool isContainer(XmlElement element) {
    return element == XmlElement::array || element == XmlElement::dictionary;
}

/// Characters as they are meant: those of the text itself where they are plain.
class MeantCharacters {
  public:
    explicit MeantCharacters(const XmlCharacters& characters)
        : decoded_(characters.isPlain ? std::string() : decodedXmlText(characters.typed)),
          view_(characters.isPlain ? characters.typed : decoded_) {}
    MeantCharacters(const MeantCharacters&) = delete;
    MeantCharacters& operator=(const MeantCharacters&) = delete;
    ~MeantCharacters() = default;

    std::string_view view() const { return view_; }

  private:
    std::string decoded_;
    std::string_view view_;
};

} // namespace

std::unique_ptr<const PropertyListSource> XmlPropertyList::parse(const Data& text) {
    std::unique_ptr<XmlPropertyList> list(new XmlPropertyList(text));
    const char* const root = XmlChecker(text.bytes(), list->ends_, list->heads_).check();
    if (root == nullptr) {
        return nullptr;
    }
    list->root_ = {kindOf(XmlReader(root, list->end()).readTag().element()), list->offset(root)};
    return list;
}

XmlCharacters XmlPropertyList::characters(Place place) const {
    XmlReader reader = readerAt(place.offset());
    const XmlTag tag = reader.readTag();
    return tag.form() == Form::start ? reader.readContent(tag) : XmlCharacters();
}

std::string XmlPropertyList::string(Place place) const {
    const XmlCharacters text = characters(place);
    return text.isPlain ? std::string(text.typed) : decodedXmlText(text.typed);
}

std::optional<std::int64_t> XmlPropertyList::integer(Place place) const {
    const XmlInteger integer = *integerFromXml(MeantCharacters(characters(place)).view());
    if (integer.isNegative) {
        return static_cast<std::int64_t>(-integer.magnitude);
    }
    if (integer.magnitude > std::numeric_limits<std::int64_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(integer.magnitude);
}

double XmlPropertyList::number(Place place) const {
    const MeantCharacters text(characters(place));
    if (place.kind() == PropertyListKind::real) {
        return *realFromXml(text.view());
    }
    const XmlInteger integer = *integerFromXml(text.view());
    const auto magnitude = static_cast<double>(integer.magnitude);
    return integer.isNegative ? -magnitude : magnitude;
}

bool XmlPropertyList::boolean(Place place) const {
    return readerAt(place.offset()).readTag().element() == XmlElement::yes;
}

Date XmlPropertyList::date(Place place) const {
    return *dateFromXml(MeantCharacters(characters(place)).view());
}

EncodedData XmlPropertyList::data(Place place) const {
    constexpr auto base64 = EncodedData::Encoding::base64;
    if (const auto end = ends_.find(Sort::data, place.offset()); end && end->isUniform) {
        const char* const start = readerAt(place.offset()).readTag().after();
        return {text_.slice({start, static_cast<std::size_t>(end->offset - offset(start))}), base64};
    }
    const XmlCharacters text = characters(place);
    return {text.isPlain ? text_.slice(text.typed) : Data::owning(decodedXmlText(text.typed)), base64};
}

const char* XmlPropertyList::afterEndTag(const XmlElementEnds::End& end) const {
    return std::find(begin() + end.offset, this->end(), '>') + 1;
}

/// Passes over the element whose tag was just read.
void XmlPropertyList::skipElement(XmlReader& reader, const XmlTag& tag) const {
    if (tag.form() == Form::empty) {
        return;
    }
    if (tag.element() == XmlElement::data) {
        if (const auto end = ends_.find(Sort::data, offset(reader.tagStart()))) {
            reader.moveTo(afterEndTag(*end));
            return;
        }
    } else if (isContainer(tag.element())) {
        if (const auto end = ends_.find(Sort::container, offset(reader.tagStart()))) {
            reader.moveTo(afterEndTag(*end));
        } else {
            skipContent(reader);
        }
        return;
    }
    reader.readContent(tag);
}

/// Passes over a container's elements and its end tag.
void XmlPropertyList::skipContent(XmlReader& reader) const {
    for (int depth = 1; depth > 0;) {
        const XmlTag tag = reader.readTag();
        if (tag.form() == Form::end) {
            --depth;
        } else if (tag.form() == Form::start && isContainer(tag.element()) &&
                   !ends_.find(Sort::container, offset(reader.tagStart()))) {
            ++depth;
        } else {
            skipElement(reader, tag);
        }
    }
}

PropertyListSource::Cursor XmlPropertyList::walk(Place container) const {
    const XmlTag tag = readerAt(container.offset()).readTag();
    // An empty tag has no end tag to stop at.
    return {.next = offset(tag.after()), .left = tag.form() == Form::empty ? 0U : 1U};
}

std::optional<PropertyListPlace> XmlPropertyList::nextElement(Cursor& cursor) const {
    if (cursor.left == 0) {
        return std::nullopt;
    }
    XmlReader reader = readerAt(cursor.next);
    if (cursor.isAtValue) {
        if (const auto end = ends_.find(Sort::container, cursor.next)) {
            prefetchAfter(*end);
            reader.moveTo(afterEndTag(*end));
        } else {
            skipElement(reader, reader.readTag());
        }
    }
    const XmlTag tag = reader.readTag();
    if (tag.form() == Form::end) {
        cursor.left = 0;
        return std::nullopt;
    }
    cursor.next = offset(reader.tagStart());
    cursor.isAtValue = true;
    return Place(kindOf(tag.element()), cursor.next);
}

bool XmlPropertyList::nextEntry(Cursor& cursor, Entry& entry) const {
    const std::optional<Place> key = nextElement(cursor);
    if (!key) {
        return false;
    }
    entry.key = string(*key);
    entry.value = *nextElement(cursor);
    return true;
}

/// Has the processor fetch, while the caller looks at the next record, the end of that and the beginning of the one
/// after.
void XmlPropertyList::prefetchAfter(const XmlElementEnds::End& end) const {
    constexpr std::uint64_t before = 384;
    constexpr std::uint64_t after = 192;
    constexpr std::uint64_t line = 64;
    if (const auto next = ends_.findNextContainer(end.offset)) {
        const std::uint64_t stop = std::min<std::uint64_t>(next->offset + after, text_.size());
        for (std::uint64_t offset = next->offset - std::min(before, next->offset); offset < stop; offset += line) {
            __builtin_prefetch(begin() + offset);
        }
    }
}

std::size_t XmlPropertyList::arrayCount(Place array) const {
    std::size_t count = 0;
    for (Cursor cursor = walk(array); nextElement(cursor);) {
        ++count;
    }
    return count;
}

bool XmlPropertyList::isArrayOfDictionaries(Place array) const {
    if (const auto end = ends_.find(Sort::container, array.offset())) {
        return end->isUniform;
    }
    Cursor cursor = walk(array);
    while (const auto element = nextElement(cursor)) {
        if (element->kind() != PropertyListKind::dictionary) {
            return false;
        }
    }
    return true;
}

void XmlPropertyList::select(Place dictionary, KeySelection& selection) const {
    XmlReader reader = readerAt(dictionary.offset());
    if (reader.readTag().form() == Form::empty) {
        return;
    }
    std::string decoded;
    for (std::uint8_t head = XmlEntryHeads::start;;) {
        const char* const entry = reader.position();
        head = heads_.match(head, entry, end());
        if (head != XmlEntryHeads::none) {
            const XmlEntryHeads::Head& known = heads_[head];
            const char* const after = entry + known.bytes.size();
            reader.moveAfterTag(after - known.tagSize, after);
            selection.offer(known.key, {kindOf(known.tag.element()), offset(reader.tagStart())});
            skipElement(reader, known.tag);
            continue;
        }
        const XmlTag keyTag = reader.readTag();
        if (keyTag.form() == Form::end) {
            return;
        }
        XmlCharacters key;
        if (keyTag.form() == Form::start) {
            key = reader.readContent(keyTag);
        }
        const XmlTag valueTag = reader.readTag();
        head = heads_.find({entry, static_cast<std::size_t>(valueTag.after() - entry)}, key.typed);
        if (!key.isPlain) {
            decoded = decodedXmlText(key.typed);
            key.typed = decoded;
        }
        selection.offer(FingerprintedKey(key.typed), {kindOf(valueTag.element()), offset(reader.tagStart())});
        skipElement(reader, valueTag);
    }
}

} // namespace platform
