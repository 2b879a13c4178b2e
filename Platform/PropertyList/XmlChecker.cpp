#include "Platform/PropertyList/XmlChecker.h"

#include "Platform/Foundation/Unicode.h"
#include "Platform/Foundation/Utf8.h"
#include "Platform/PropertyList/PropertyList.h"
#include "Platform/PropertyList/XmlScalars.h"
#include "Platform/PropertyList/XmlText.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace platform {

namespace {

using Form = XmlTag::Form;

bool isScalar(XmlElement element, std::string_view text) {
    switch (element) {
    case XmlElement::integer:
        return integerFromXml(text).has_value();
    case XmlElement::real:
        return realFromXml(text).has_value();
    case XmlElement::date:
        return dateFromXml(text).has_value();
    case XmlElement::yes:
    case XmlElement::no:
        return text.empty();
    default:
        return false;
    }
}

bool mayBeAnyText(XmlElement element) {
    return element == XmlElement::string || element == XmlElement::key || element == XmlElement::data;
}

bool mayBeEmptyTag(XmlElement element) {
    switch (element) {
    case XmlElement::key:
    case XmlElement::string:
    case XmlElement::yes:
    case XmlElement::no:
    case XmlElement::array:
    case XmlElement::dictionary:
        return true;
    default:
        return false;
    }
}

} // namespace

XmlChecker::XmlChecker(std::string_view text, XmlElementEnds& ends, XmlEntryHeads& heads)
    : begin_(text.data()), end_(text.data() + text.size()), encodingChecked_(begin_), reader_(begin_, end_),
      ends_(ends), heads_(heads) {}

const char* XmlChecker::check() {
    if (!reader_.skipMiscellany() || !reader_.skipDocumentType() || !reader_.skipMiscellany()) {
        return nullptr;
    }
    const char* const start = reader_.position();
    const XmlTag first = reader_.readTag();
    const bool isWrapped = first.element() == XmlElement::plist && first.form() == Form::start;
    if (isWrapped ? !reader_.skipMiscellany() : first.form() == Form::malformed) {
        return nullptr;
    }
    const char* const root = isWrapped ? reader_.position() : start;
    reader_.moveTo(root);
    if (!checkObject() || (isWrapped && !reader_.readEndTag(XmlElement::plist)) || !reader_.skipMiscellany() ||
        reader_.position() != end_ || !isUtf8({encodingChecked_, static_cast<std::size_t>(end_ - encodingChecked_)})) {
        return nullptr;
    }
    return root;
}

bool XmlChecker::checkObject() {
    do {
        if (reader_.position() >= encodingChecked_ && !checkEncoding()) {
            return false;
        }
        const bool isAtEntry =
            !path_.empty() && path_.back().element == XmlElement::dictionary && !path_.back().expectsValue;
        const std::uint8_t head =
            isAtEntry ? heads_.match(path_.back().lastHead, reader_.position(), end_) : XmlEntryHeads::none;
        if (!(head == XmlEntryHeads::none ? checkTag() : checkKnownEntry(head))) {
            return false;
        }
    } while (!path_.empty());
    return true;
}

bool XmlChecker::checkKnownEntry(std::uint8_t index) {
    const XmlEntryHeads::Head& head = heads_[index];
    path_.back().lastHead = index;
    const char* const after = reader_.position() + head.bytes.size();
    reader_.moveAfterTag(after - head.tagSize, after);
    return head.tag.form() == Form::empty || checkLeaf(head.tag);
}

/// Checks the encoding of what comes next, which by the way brings it near.
bool XmlChecker::checkEncoding() {
    constexpr std::ptrdiff_t step = 16384;
    const char* const from = encodingChecked_;
    encodingChecked_ = skipUtf8(from, reader_.position() + std::min(step, end_ - reader_.position()), end_);
    return encodingChecked_ != nullptr;
}

bool XmlChecker::checkTag() {
    const char* const start = reader_.position();
    const XmlTag tag = reader_.readTag();
    if (tag.form() == Form::malformed) {
        return false;
    }
    if (tag.form() == Form::end) {
        return close(tag);
    }
    if (!isExpected(tag.element(), start)) {
        return false;
    }
    if (tag.element() == XmlElement::key) {
        return checkKey(tag);
    }
    const bool isContainer = tag.element() == XmlElement::dictionary || tag.element() == XmlElement::array;
    if (isContainer && tag.form() == Form::start) {
        return open(tag);
    }
    noteHead(tag);
    return tag.form() == Form::empty ? mayBeEmptyTag(tag.element()) : checkLeaf(tag);
}

bool XmlChecker::checkKey(const XmlTag& tag) {
    OpenContainer& container = path_.back();
    container.key = {};
    if (tag.form() == Form::empty) {
        return true;
    }
    container.key = reader_.readContent(tag);
    return container.key.typed.data() != nullptr;
}

/// Takes note of the head that ends with `tag`, if that is the value's in an entry of a dictionary.
void XmlChecker::noteHead(const XmlTag& tag) {
    if (path_.empty() || path_.back().element != XmlElement::dictionary) {
        return;
    }
    OpenContainer& container = path_.back();
    const std::string_view bytes(container.entryStart, static_cast<std::size_t>(tag.after() - container.entryStart));
    constexpr std::size_t longest = 256;
    if (!container.key.isPlain || bytes.size() > longest) {
        container.lastHead = XmlEntryHeads::start;
        return;
    }
    container.lastHead =
        heads_.note(container.lastHead, {.bytes = bytes,
                                         .key = FingerprintedKey(container.key.typed),
                                         .tag = tag,
                                         .tagSize = static_cast<std::size_t>(tag.after() - reader_.tagStart())});
}

/// Whether `element` may stand where the pass is; the innermost container moves on.
bool XmlChecker::isExpected(XmlElement element, const char* entryStart) {
    if (path_.empty()) {
        return element != XmlElement::key;
    }
    OpenContainer& container = path_.back();
    const bool expectsKey = container.element == XmlElement::dictionary && !container.expectsValue;
    container.expectsValue = expectsKey;
    if (expectsKey) {
        container.entryStart = entryStart;
    }
    container.isUniform = container.isUniform && element == XmlElement::dictionary;
    return (element == XmlElement::key) == expectsKey;
}

bool XmlChecker::open(const XmlTag& tag) {
    path_.push_back({.start = reader_.tagStart(), .element = tag.element()});
    return path_.size() <= PropertyList::greatestDepth;
}

bool XmlChecker::close(const XmlTag& tag) {
    if (path_.empty() || path_.back().element != tag.element() || path_.back().expectsValue) {
        return false;
    }
    const OpenContainer& container = path_.back();
    ends_.note(XmlElementEnds::Sort::container, offset(container.start),
               {offset(reader_.tagStart()), container.isUniform});
    path_.pop_back();
    return true;
}

bool XmlChecker::checkLeaf(const XmlTag& tag) {
    const char* const start = reader_.tagStart();
    const XmlCharacters characters = reader_.readContent(tag);
    if (characters.typed.data() == nullptr) {
        return false;
    }
    if (tag.element() == XmlElement::data) {
        const std::uint64_t stop = offset(characters.typed.data()) + characters.typed.size();
        ends_.note(XmlElementEnds::Sort::data, offset(start), {stop, characters.isPlain});
    }
    if (mayBeAnyText(tag.element())) {
        return true;
    }
    return characters.isPlain ? isScalar(tag.element(), characters.typed)
                              : isScalar(tag.element(), decodedXmlText(characters.typed));
}

} // namespace platform
