// The part of RSSParser that turns HTML into plain text.
//
// Every step makes the text shorter or leaves it, so all but the first work in place, and each takes linear time.

#include "Extension/Tips/RSSParser.h"

#include "Platform/Foundation/Utf8.h"
#include "Platform/Foundation/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace foliovault {

using namespace platform;

namespace {

/// Writes over a text from its beginning while it is read further on.
class Rewriter {
  public:
    explicit Rewriter(std::string& text) : text_(text), out_(text.data()) {}
    Rewriter(const Rewriter&) = delete;
    Rewriter& operator=(const Rewriter&) = delete;
    ~Rewriter() { text_.resize(static_cast<std::size_t>(out_ - text_.data())); }

    void put(std::string_view piece) {
        std::memmove(out_, piece.data(), piece.size());
        out_ += piece.size();
    }

  private:
    std::string& text_;
    char* out_;
};

/// A tag is a "<", at least one character other than ">", and a ">"; it may hold more of "<".
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

/// All at once is as good as one after the other with "&amp;" last: no reference holds another's "&" or what another
/// stands for.
void decodeNamedEntities(std::string& text) {
    std::string_view rest = text;
    Rewriter out(text);
    for (std::size_t at = rest.find('&'); at != std::string_view::npos; at = rest.find('&', at)) {
        const std::string_view reference = rest.substr(at);
        const auto* const entity =
            std::find_if(namedEntities.begin(), namedEntities.end(),
                         [reference](const NamedEntity& each) { return reference.starts_with(each.reference); });
        if (entity == namedEntities.end()) {
            ++at;
            continue;
        }
        out.put(rest.substr(0, at));
        out.put(entity->character);
        rest.remove_prefix(at + entity->reference.size());
        at = 0;
    }
    out.put(rest);
}

struct ReferenceForm {
    std::string_view opening;
    std::string_view digits;
    int radix;
};
constexpr ReferenceForm decimal{"&#", "0123456789", 10};
constexpr ReferenceForm hexadecimal{"&#x", "0123456789ABCDEFabcdef", 16};

void decodeReferences(std::string& text, const ReferenceForm& form) {
    std::string_view rest = text;
    Rewriter out(text);
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
        out.put(rest.substr(0, at));
        out.put(*character);
        rest.remove_prefix(end + 1);
        at = 0;
    }
    out.put(rest);
}

} // namespace

std::string RSSParser::stripHTML(std::string_view html) {
    std::string text = withoutTags(html);
    if (text.find('&') != std::string::npos) {
        decodeNamedEntities(text);
        text = decodeNumericEntities(std::move(text));
    }
    collapseWhiteSpace(text);
    return text;
}

std::string RSSParser::decodeNumericEntities(std::string text) {
    decodeReferences(text, decimal);
    decodeReferences(text, hexadecimal);
    return text;
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
