// The part of RSSParser that turns HTML into plain text.
//
// Each step takes linear time.

#include "Extension/Tips/RSSParser.h"

#include "Platform/Foundation/Utf8.h"
#include "Platform/Foundation/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace foliovault {

using namespace platform;

namespace {

/// Removes tags: a "<", one or more characters other than ">", and a ">".
std::string withoutTags(std::string_view html) {
    std::string text;
    text.reserve(html.size());
    std::size_t begin = 0;
    for (std::size_t tag = html.find('<'); tag != std::string_view::npos;) {
        const std::size_t end = html.find('>', tag + 1);
        if (end == std::string_view::npos) {
            break;
        }
        if (end > tag + 1) {
            text += html.substr(begin, tag - begin);
            begin = end + 1;
        }
        tag = html.find('<', end + 1);
    }
    text += html.substr(begin);
    return text;
}

struct NamedEntity {
    std::string_view reference;
    std::string_view character;
};
constexpr std::array namedEntities{
    NamedEntity{"&lt;", "<"},   NamedEntity{"&gt;", ">"},   NamedEntity{"&quot;", "\""},
    NamedEntity{"&apos;", "'"}, NamedEntity{"&nbsp;", " "}, NamedEntity{"&amp;", "&"},
};

/// Decodes all at once, which is as good as one after the other with "&amp;" last: no reference holds another's "&" or
/// what another stands for.
std::string withNamedEntities(std::string_view rest) {
    std::string text;
    for (std::size_t at = rest.find('&'); at != std::string_view::npos; at = rest.find('&', at)) {
        const std::string_view reference = rest.substr(at);
        const auto* const entity =
            std::find_if(namedEntities.begin(), namedEntities.end(),
                         [reference](const NamedEntity& each) { return reference.starts_with(each.reference); });
        if (entity == namedEntities.end()) {
            ++at;
            continue;
        }
        text += rest.substr(0, at);
        text += entity->character;
        rest.remove_prefix(at + entity->reference.size());
        at = 0;
    }
    text += rest;
    return text;
}

struct ReferenceForm {
    std::string_view opening;
    std::string_view digits;
    int radix;
};
constexpr ReferenceForm decimal{"&#", "0123456789", 10};
constexpr ReferenceForm hexadecimal{"&#x", "0123456789ABCDEFabcdef", 16};

std::string withReferences(std::string_view rest, const ReferenceForm& form) {
    std::string text;
    for (std::size_t at = rest.find(form.opening); at != std::string_view::npos; at = rest.find(form.opening, at)) {
        const std::size_t digits = at + form.opening.size();
        const std::size_t end = std::min(rest.find_first_not_of(form.digits, digits), rest.size());
        const bool isClosed = end < rest.size() && rest[end] == ';';
        const auto character =
            isClosed ? RSSParser::decodeScalar(rest.substr(digits, end - digits), form.radix) : std::nullopt;
        if (!character) {
            at = end;
            continue;
        }
        text += rest.substr(0, at);
        text += *character;
        rest.remove_prefix(end + 1);
        at = 0;
    }
    text += rest;
    return text;
}

} // namespace

std::string RSSParser::stripHTML(std::string_view html) {
    std::string text = withoutTags(html);
    if (text.find('&') != std::string::npos) {
        text = decodeNumericEntities(withNamedEntities(text));
    }
    collapseWhiteSpace(text);
    return text;
}

std::string RSSParser::decodeNumericEntities(std::string_view text) {
    return withReferences(withReferences(text, decimal), hexadecimal);
}

std::optional<std::string> RSSParser::decodeScalar(std::string_view digits, int radix) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, radix);
    if (error != std::errc() || end != digits.data() + digits.size() || !isCharacter(number)) {
        return std::nullopt;
    }
    std::string character;
    appendUtf8(character, number);
    return character;
}

} // namespace foliovault
