#include "Platform/PropertyList/XmlPropertyList.h"

#include "Platform/Foundation/Utf8.h"
#include "Platform/PropertyList/PropertyList.h"
#include "Platform/PropertyList/XmlText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace platform {

namespace {

using Kind = PropertyListKind;
using Notation = PropertyListNotation;
using Node = PropertyListNode;

struct Element {
    std::string_view name;
    Kind kind;
    /// Whether an empty tag is allowed.
    bool mayBeEmpty;
};

constexpr std::array elements = {
    Element{"string", Kind::string, true},   Element{"integer", Kind::integer, false},
    Element{"dict", Kind::dictionary, true}, Element{"array", Kind::array, true},
    Element{"date", Kind::date, false},      Element{"data", Kind::data, false},
    Element{"true", Kind::boolean, true},    Element{"false", Kind::boolean, true},
    Element{"real", Kind::real, false},
};

struct Tag {
    enum class Form { malformed, start, empty, end };
    Form form = Form::malformed;
    std::string_view name;
};

constexpr std::string_view blanks = " \n\t\r";

constexpr bool isBlank(char character) {
    return blanks.find(character) != std::string_view::npos;
}

/// Returns the number that all of `text` writes, for `std::from_chars` with that format.
template <typename Number, typename Format>
std::optional<Number> numberOf(std::string_view text, Format format) {
    Number number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number, format);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

/// Returns an integer between −2^63 and 2^64−1, decimal or 0x, with or without a sign.
std::optional<Node> integerNode(std::string_view text) {
    constexpr std::uint64_t maxPositive = std::numeric_limits<std::int64_t>::max();
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(isHexadecimal ? 2 : 0);
    const auto magnitude = numberOf<std::uint64_t>(text, isHexadecimal ? 16 : 10);
    if (!magnitude || (isNegative && *magnitude > maxPositive + 1)) {
        return std::nullopt;
    }
    if (!isNegative && *magnitude > maxPositive) {
        return Node{.kind = Kind::integer,
                    .notation = Notation::wide,
                    .content = std::bit_cast<std::uint64_t>(static_cast<double>(*magnitude))};
    }
    return Node{.kind = Kind::integer, .content = isNegative ? -*magnitude : *magnitude};
}

/// Returns the node of an integer, a real (with inf and nan) or a date. Blanks around a number do not count. A date is
/// YYYY-MM-DDThh:mm:ssZ and nothing else.
std::optional<Node> scalarNode(Kind kind, std::string_view text) {
    std::optional<double> number;
    if (kind == Kind::date) {
        constexpr std::size_t size = std::string_view("0000-00-00T00:00:00Z").size();
        const bool isStrict = text.size() == size && text[10] == 'T' && text.back() == 'Z';
        const auto date = isStrict ? fromRfc3339(text) : std::nullopt;
        number = date ? std::optional(date->secondsSinceReferenceDate) : std::nullopt;
    } else {
        text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
        text = text.substr(0, text.find_last_not_of(blanks) + 1);
        if (kind == Kind::integer) {
            return integerNode(text);
        }
        text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
        number = numberOf<double>(text, std::chars_format::general);
    }
    return number ? std::optional(Node{.kind = kind, .content = std::bit_cast<std::uint64_t>(*number)}) : std::nullopt;
}

class Reader {
  public:
    explicit Reader(const Data& text) : tree_{.file = text}, rest_(text.bytes()), collector_(tree_.nodes) {}

    std::optional<PropertyListTree> read() {
        if (!skipMiscellany() || !skipDocumentType()) {
            return std::nullopt;
        }
        // Most values of large files have more bytes. Unused memory costs nothing.
        constexpr std::size_t typicalValueSize = 64;
        tree_.nodes.reserve(rest_.size() / typicalValueSize);
        Tag tag = readTag();
        const bool isWrapped = tag.form == Tag::Form::start && tag.name == "plist";
        if (isWrapped) {
            tag = readTag();
        }
        const std::optional<Node> root = value(tag, 0);
        if (!root || (isWrapped && !readEndTag("plist")) || !skipMiscellany() || !rest_.empty() ||
            !isUtf8(tree_.file.bytes())) {
            return std::nullopt;
        }
        tree_.root = *root;
        return std::move(tree_);
    }

  private:
    /// Skips blanks, comments and instructions. Returns false if one does not end.
    bool skipMiscellany() {
        for (;;) {
            rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size()));
            const auto size = xmlMiscellanySize(rest_);
            if (size.value_or(0) == 0) {
                return size.has_value();
            }
            rest_.remove_prefix(*size);
        }
    }

    /// Skips a DOCTYPE with all its definitions. Returns false if it does not end.
    bool skipDocumentType() {
        if (!rest_.starts_with("<!DOCTYPE")) {
            return true;
        }
        for (int depth = 0; !rest_.empty();) {
            const auto size = xmlMiscellanySize(rest_);
            if (size != std::size_t{0}) {
                rest_.remove_prefix(size.value_or(rest_.size()));
                continue;
            }
            const char character = rest_.front();
            rest_.remove_prefix(1);
            if (character == '"' || character == '\'') {
                const std::size_t end = rest_.find(character);
                rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
            } else if (character == '<') {
                ++depth;
            } else if (character == '>' && --depth == 0) {
                return true;
            }
        }
        return false;
    }

    /// Reads the next tag. Returns a malformed one if anything else comes first. A '>' in an attribute does not end it.
    Tag readTag() {
        if (!skipMiscellany() || !rest_.starts_with('<')) {
            return {};
        }
        const bool isEnd = rest_.substr(1).starts_with('/');
        const std::size_t nameStart = isEnd ? 2 : 1;
        std::size_t at = nameStart;
        while (at < rest_.size() && rest_[at] >= 'a' && rest_[at] <= 'z') {
            ++at;
        }
        Tag tag{.form = isEnd ? Tag::Form::end : Tag::Form::start, .name = rest_.substr(nameStart, at - nameStart)};
        if (at < rest_.size() && !isBlank(rest_[at]) && rest_[at] != '/' && rest_[at] != '>') {
            return {};
        }
        for (; at < rest_.size() && rest_[at] != '>'; ++at) {
            const char character = rest_[at];
            if (character == '<' || tag.form == Tag::Form::empty || (isEnd && !isBlank(character))) {
                return {};
            }
            if (character == '/') {
                tag.form = Tag::Form::empty;
            } else if (character == '"' || character == '\'') {
                at = std::min(rest_.find(character, at + 1), rest_.size() - 1);
            }
        }
        if (at >= rest_.size()) {
            return {};
        }
        rest_.remove_prefix(at + 1);
        return tag;
    }

    bool readEndTag(std::string_view name) {
        const Tag tag = readTag();
        return tag.form == Tag::Form::end && tag.name == name;
    }

    /// Reads the rest of an element after its start tag, as a string's node. Returns nothing if it is malformed.
    std::optional<Node> characters(std::string_view name) {
        const std::string_view start = rest_;
        Node node{.kind = Kind::string};
        std::size_t size = std::min(start.find('<'), start.size());
        if (!start.substr(size).starts_with("</") || start.substr(0, size).find('&') != std::string_view::npos) {
            node.notation = Notation::xmlText;
            size = xmlTextSize(start).value_or(start.size());
        }
        rest_.remove_prefix(size);
        if (!readEndTag(name)) {
            return std::nullopt;
        }
        node.content = static_cast<std::uint64_t>(start.data() - tree_.file.bytes().data());
        node.count = static_cast<std::uint32_t>(size);
        return node;
    }

    // NOLINTBEGIN(misc-no-recursion): as deep as the list is nested, within bounds
    /// Reads the rest of a value after its first tag.
    std::optional<Node> value(const Tag& tag, int depth) {
        const auto* const element =
            std::find_if(elements.begin(), elements.end(), [&](const Element& each) { return each.name == tag.name; });
        const bool isEmpty = tag.form == Tag::Form::empty;
        if (element == elements.end() || !(isEmpty ? element->mayBeEmpty : tag.form == Tag::Form::start)) {
            return std::nullopt;
        }
        if (element->kind == Kind::boolean && isEmpty) {
            return Node{.kind = Kind::boolean, .content = tag.name == "true" ? 1U : 0U};
        }
        if (isEmpty) {
            return Node{.kind = element->kind};
        }
        if (element->kind == Kind::array || element->kind == Kind::dictionary) {
            return container(*element, depth + 1);
        }
        return leaf(*element);
    }

    std::optional<Node> container(const Element& element, int depth) {
        if (depth > PropertyList::maxDepth) {
            return std::nullopt;
        }
        const std::size_t mark = collector_.mark();
        for (;;) {
            Tag tag = readTag();
            if (tag.form == Tag::Form::end) {
                return tag.name == element.name ? collector_.close(element.kind, mark) : std::nullopt;
            }
            if (element.kind == Kind::dictionary) {
                const auto key = tag.name != "key"              ? std::nullopt
                                 : tag.form == Tag::Form::empty ? std::optional(Node{.kind = Kind::string})
                                                                : characters("key");
                if (!key || !collector_.add(*key)) {
                    return std::nullopt;
                }
                tag = readTag();
            }
            const auto child = value(tag, depth);
            if (!child || !collector_.add(*child)) {
                return std::nullopt;
            }
        }
    }
    // NOLINTEND(misc-no-recursion)

    std::optional<Node> leaf(const Element& element) {
        std::optional<Node> node = characters(element.name);
        if (!node || element.kind == Kind::string) {
            return node;
        }
        const bool isPlain = node->notation == Notation::plain;
        if (element.kind == Kind::data) {
            node->kind = Kind::data;
            node->notation = isPlain ? Notation::base64 : Notation::base64InXmlText;
            return node;
        }
        const std::string decoded = isPlain ? std::string() : decodedXmlText(tree_.bytes(*node));
        const std::string_view text = isPlain ? tree_.bytes(*node) : decoded;
        if (element.kind == Kind::boolean) {
            return text.empty()
                       ? std::optional(Node{.kind = Kind::boolean, .content = element.name == "true" ? 1U : 0U})
                       : std::nullopt;
        }
        return scalarNode(element.kind, text);
    }

    PropertyListTree tree_;
    /// The unread rest.
    std::string_view rest_;
    PropertyListCollector collector_;
};

} // namespace

std::optional<PropertyListTree> readXmlPropertyList(const Data& text) {
    return Reader(text).read();
}

} // namespace platform
