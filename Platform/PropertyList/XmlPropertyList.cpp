#include "Platform/PropertyList/XmlPropertyList.h"

#include "Platform/PropertyList/KeySelection.h"
#include "Platform/PropertyList/XmlChecker.h"
#include "Platform/PropertyList/XmlScalars.h"
#include "Platform/PropertyList/XmlText.h"

#include <limits>
#include <string_view>
#include <utility>

namespace platform {

namespace {

using Form = XmlTag::Form;
using Sort = XmlElementEnds::Sort;

PropertyListKind kindOf(XmlElement element) {
    switch (element) {
    case XmlElement::integer:
        return PropertyListKind::integer;
    case XmlElement::real:
        return PropertyListKind::real;
    case XmlElement::yes:
    case XmlElement::no:
        return PropertyListKind::boolean;
    case XmlElement::date:
        return PropertyListKind::date;
    case XmlElement::data:
        return PropertyListKind::data;
    case XmlElement::array:
        return PropertyListKind::array;
    case XmlElement::dictionary:
        return PropertyListKind::dictionary;
    default:
        return PropertyListKind::string;
    }
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
    XmlElementEnds ends(text.size());
    const char* const root = XmlChecker(text.bytes(), ends).check();
    if (root == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<const PropertyListSource>(new XmlPropertyList(text, std::move(ends), root));
}

XmlPropertyList::XmlPropertyList(const Data& text, XmlElementEnds ends, const char* root)
    : text_(text), ends_(std::move(ends)), root_(kindOf(XmlReader(root, end()).readNextTag().element()), offset(root)) {
}

XmlCharacters XmlPropertyList::characters(Place place) const {
    XmlReader reader = readerAt(place.offset());
    const XmlTag tag = reader.readNextTag();
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
    return readerAt(place.offset()).readNextTag().element() == XmlElement::yes;
}

Date XmlPropertyList::date(Place place) const {
    return *dateFromXml(MeantCharacters(characters(place)).view());
}

EncodedData XmlPropertyList::data(Place place) const {
    constexpr auto base64 = EncodedData::Encoding::base64;
    if (const auto end = ends_.find(Sort::data, place.offset()); end && end->isUniform) {
        const char* const start = readerAt(place.offset()).readNextTag().after();
        return {text_.slice({start, static_cast<std::size_t>(end->offset - offset(start))}), base64};
    }
    const XmlCharacters text = characters(place);
    return {text.isPlain ? text_.slice(text.typed) : Data::owning(decodedXmlText(text.typed)), base64};
}

std::optional<XmlElementEnds::End> XmlPropertyList::knownEnd(const char* start, XmlElement element) const {
    if (isContainer(element)) {
        return ends_.find(Sort::container, offset(start));
    }
    if (element == XmlElement::data) {
        return ends_.find(Sort::data, offset(start));
    }
    return std::nullopt;
}

/// Passes over the element whose tag was just read.
void XmlPropertyList::skipElement(XmlReader& reader, const XmlTag& tag) const {
    if (tag.form() == Form::empty) {
        return;
    }
    if (const auto end = knownEnd(reader.tagStart(), tag.element())) {
        reader.moveTo(begin() + end->offset);
        reader.readNextTag();
    } else if (isContainer(tag.element())) {
        skipContent(reader);
    } else {
        reader.readContent(tag);
    }
}

/// Passes over a container's elements and its end tag.
void XmlPropertyList::skipContent(XmlReader& reader) const {
    for (int depth = 1; depth > 0;) {
        const XmlTag tag = reader.readNextTag();
        if (tag.form() == Form::end) {
            --depth;
        } else if (tag.form() == Form::start && isContainer(tag.element()) &&
                   !knownEnd(reader.tagStart(), tag.element())) {
            ++depth;
        } else {
            skipElement(reader, tag);
        }
    }
}

PropertyListSource::Cursor XmlPropertyList::walk(Place container) const {
    const XmlTag tag = readerAt(container.offset()).readNextTag();
    // An empty tag has no end tag to stop at.
    return {.next = offset(tag.after()), .left = tag.form() == Form::empty ? 0U : 1U};
}

std::optional<PropertyListPlace> XmlPropertyList::nextElement(Cursor& cursor) const {
    if (cursor.left == 0) {
        return std::nullopt;
    }
    XmlReader reader = readerAt(cursor.next);
    if (cursor.isAtValue) {
        skipElement(reader, reader.readNextTag());
    }
    const XmlTag tag = reader.readNextTag();
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
    if (reader.readNextTag().form() == Form::empty) {
        return;
    }
    std::string decoded;
    for (;;) {
        const XmlTag keyTag = reader.readNextTag();
        if (keyTag.form() == Form::end) {
            return;
        }
        XmlCharacters key;
        if (keyTag.form() == Form::start) {
            key = reader.readContent(keyTag);
        }
        if (!key.isPlain) {
            decoded = decodedXmlText(key.typed);
            key.typed = decoded;
        }
        const XmlTag valueTag = reader.readNextTag();
        if (const auto index = selection.indexOf(key.typed)) {
            selection.put(*index, {kindOf(valueTag.element()), offset(reader.tagStart())});
        }
        skipElement(reader, valueTag);
    }
}

} // namespace platform
