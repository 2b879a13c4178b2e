#include "Platform/PropertyList/XmlReader.h"

#include "Platform/PropertyList/XmlText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform {

namespace {

using Form = XmlTag::Form;

constexpr std::array<std::pair<std::string_view, XmlElement>, 11> elements = {{
    {"plist", XmlElement::plist},
    {"key", XmlElement::key},
    {"string", XmlElement::string},
    {"integer", XmlElement::integer},
    {"real", XmlElement::real},
    {"true", XmlElement::yes},
    {"false", XmlElement::no},
    {"date", XmlElement::date},
    {"data", XmlElement::data},
    {"array", XmlElement::array},
    {"dict", XmlElement::dictionary},
}};

XmlElement elementNamed(std::string_view name) {
    const auto* const element = std::find_if(elements.begin(), elements.end(),
                                             [name](const auto& candidate) { return candidate.first == name; });
    return element == elements.end() ? XmlElement::unknown : element->second;
}

/// The tag at `p`, whatever stands in it. Attributes mean nothing here, but a '>' in one of them does not end the tag.
XmlTag tagAt(const char* p, const char* end) {
    if (p == end || *p != '<') {
        return {};
    }
    ++p;
    const bool isEnd = p < end && *p == '/';
    const char* const name = p + (isEnd ? 1 : 0);
    const char* const nameEnd = std::find_if(name, end, [](char letter) { return letter < 'a' || letter > 'z'; });
    if (nameEnd == end || !(isXmlBlank(*nameEnd) || *nameEnd == '/' || *nameEnd == '>')) {
        return {};
    }
    bool isEmpty = false;
    for (p = nameEnd; p < end && *p != '>'; ++p) {
        if (*p == '<' || isEmpty || (isEnd && !isXmlBlank(*p))) {
            return {};
        }
        isEmpty = *p == '/';
        if (*p == '"' || *p == '\'') {
            p = std::find(p + 1, end, *p);
            if (p == end) {
                return {};
            }
        }
    }
    if (p == end) {
        return {};
    }
    const Form form = isEnd ? Form::end : isEmpty ? Form::empty : Form::start;
    return {form, elementNamed({name, static_cast<std::size_t>(nameEnd - name)}), p + 1};
}

} // namespace

XmlTag XmlReader::readAnyTag() {
    if (!skipMiscellany()) {
        return {};
    }
    tagStart_ = position_;
    const XmlTag tag = tagAt(tagStart_, end_);
    if (tag.form() != Form::malformed) {
        moveTo(tag.after());
    }
    return tag;
}

XmlCharacters XmlReader::readAnyContent(const XmlTag& tag, const char* mark) {
    const char* const start = position_;
    const bool isPlain = end_ - mark >= 2 && mark[0] == '<' && mark[1] == '/';
    const char* const stop = isPlain ? mark : skipXmlText(start, end_);
    if (stop == nullptr) {
        return {};
    }
    moveTo(stop);
    if (!readEndTag(tag.element())) {
        return {};
    }
    return {.typed = {start, static_cast<std::size_t>(stop - start)}, .isPlain = isPlain};
}

bool XmlReader::skipMiscellany() {
    for (const char* p = skipXmlBlanks(position_, end_);;) {
        const char* const next = skipXmlMiscellany(p, end_);
        if (next == nullptr) {
            return false;
        }
        if (next == p) {
            moveTo(p);
            return true;
        }
        p = skipXmlBlanks(next, end_);
    }
}

bool XmlReader::skipDocumentType() {
    constexpr std::string_view start = "<!DOCTYPE";
    const char* p = position_;
    if (!std::string_view(p, static_cast<std::size_t>(end_ - p)).starts_with(start)) {
        return true;
    }
    int depth = 0;
    while (p != nullptr && p < end_) {
        if (const char* const next = skipXmlMiscellany(p, end_); next != p) {
            p = next;
            continue;
        }
        switch (const char character = *p++) {
        case '"':
        case '\'':
            p = std::find(p, end_, character);
            p += p < end_ ? 1 : 0;
            break;
        case '<':
            ++depth;
            break;
        case '>':
            if (--depth == 0) {
                moveTo(p);
                return true;
            }
            break;
        default:
            break;
        }
    }
    return false;
}

} // namespace platform
