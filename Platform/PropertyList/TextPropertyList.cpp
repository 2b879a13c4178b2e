#include "Platform/PropertyList/TextPropertyList.h"

#include "Platform/Foundation/AsciiSet.h"
#include "Platform/Foundation/Utf8.h"
#include "Platform/Foundation/WhiteSpace.h"
#include "Platform/PropertyList/PropertyList.h"

#include <algorithm>

namespace platform {

namespace {

using Kind = PropertyListKind;
using Notation = PropertyListNotation;
using Node = PropertyListNode;

constexpr AsciiSet bareCharacters = asciiLettersAndDigits.with("_$/:.-");

/// Reads the escapes of a quoted string's content.
class Unescaper {
  public:
    explicit Unescaper(std::string_view content) : rest_(content) {}

    std::string unescaped() {
        std::string text;
        for (;;) {
            const std::size_t plain = std::min(rest_.find('\\'), rest_.size());
            text += rest_.substr(0, plain);
            rest_.remove_prefix(plain);
            if (rest_.empty()) {
                return text;
            }
            rest_.remove_prefix(1);
            appendEscaped(text);
        }
    }

  private:
    /// Reads the characters after a backslash.
    void appendEscaped(std::string& text) {
        constexpr std::string_view letters = "abfnrtv";
        constexpr std::string_view meanings = "\a\b\f\n\r\t\v";
        const char letter = rest_.front();
        if (letter == 'U') {
            rest_.remove_prefix(1);
            appendUnits(text);
        } else if (letter >= '0' && letter <= '7') {
            appendUtf8(text, readNumber(8, 3));
        } else {
            const std::size_t index = letters.find(letter);
            text += index == std::string_view::npos ? letter : meanings[index];
            rest_.remove_prefix(1);
        }
    }

    /// Reads a unit of UTF-16, or two that make one character.
    void appendUnits(std::string& text) {
        const char32_t high = readNumber(16, 4);
        if (high >= 0xD800 && high < 0xDC00 && rest_.starts_with("\\U")) {
            const std::string_view afterHigh = rest_;
            rest_.remove_prefix(2);
            if (const char32_t low = readNumber(16, 4); low >= 0xDC00 && low < 0xE000) {
                appendUtf8(text, 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00));
                return;
            }
            rest_ = afterHigh;
        }
        appendUtf8(text, high);
    }

    char32_t readNumber(unsigned base, std::size_t maxDigits) {
        char32_t number = 0;
        for (; maxDigits > 0 && !rest_.empty() && hexadecimalValue(rest_.front()) < base; --maxDigits) {
            number = number * base + hexadecimalValue(rest_.front());
            rest_.remove_prefix(1);
        }
        return number;
    }

    std::string_view rest_;
};

class Reader {
  public:
    explicit Reader(const Data& text) : tree_{.file = text}, rest_(text.bytes()), collector_(tree_.nodes) {}

    std::optional<PropertyListTree> read() {
        if (!skipBlanks()) {
            return std::nullopt;
        }
        const std::optional<Node> root = value(0);
        if (!root || !skipBlanks() || !rest_.empty() || !isUtf8(tree_.file.bytes())) {
            return std::nullopt;
        }
        tree_.root = *root;
        return std::move(tree_);
    }

  private:
    /// Skips blanks and comments. Returns false if a comment does not end.
    bool skipBlanks() {
        for (;;) {
            rest_.remove_prefix(static_cast<std::size_t>(
                std::find_if_not(rest_.begin(), rest_.end(), isAsciiWhiteSpace) - rest_.begin()));
            if (rest_.starts_with("//")) {
                rest_.remove_prefix(std::min(rest_.find_first_of("\r\n"), rest_.size()));
            } else if (rest_.starts_with("/*")) {
                const std::size_t end = rest_.find("*/", 2);
                if (end == std::string_view::npos) {
                    return false;
                }
                rest_.remove_prefix(end + 2);
            } else {
                return true;
            }
        }
    }

    /// Skips `mark` and blanks around it. Returns false without that mark.
    bool skipMark(char mark) {
        if (!skipBlanks() || !rest_.starts_with(mark)) {
            return false;
        }
        rest_.remove_prefix(1);
        return skipBlanks();
    }

    // NOLINTBEGIN(misc-no-recursion): as deep as the list is nested, within bounds
    std::optional<Node> value(int depth) {
        switch (rest_.empty() ? '\0' : rest_.front()) {
        case '{':
        case '(':
            return container(depth + 1);
        case '<':
            return data();
        default:
            return string();
        }
    }

    std::optional<Node> container(int depth) {
        const bool isDictionary = rest_.front() == '{';
        const char end = isDictionary ? '}' : ')';
        if (depth > PropertyList::maxDepth || !skipMark(rest_.front())) {
            return std::nullopt;
        }
        const std::size_t mark = collector_.mark();
        while (!rest_.starts_with(end)) {
            if (isDictionary) {
                const std::optional<Node> key = string();
                if (!key || !collector_.add(*key) || !skipMark('=')) {
                    return std::nullopt;
                }
            }
            const std::optional<Node> child = value(depth);
            if (!child || !collector_.add(*child) || !skipBlanks()) {
                return std::nullopt;
            }
            const bool isLast = !isDictionary && rest_.starts_with(end);
            if (!isLast && !skipMark(isDictionary ? ';' : ',')) {
                return std::nullopt;
            }
        }
        rest_.remove_prefix(1);
        return collector_.close(isDictionary ? Kind::dictionary : Kind::array, mark);
    }
    // NOLINTEND(misc-no-recursion)

    std::optional<Node> data() {
        const std::size_t end = rest_.find('>');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view digits = rest_.substr(1, end - 1);
        std::size_t count = 0;
        for (const char character : digits) {
            if (hexadecimalValue(character) < 16) {
                ++count;
            } else if (!isAsciiWhiteSpace(character)) {
                return std::nullopt;
            }
        }
        rest_.remove_prefix(end + 1);
        return count % 2 == 0 ? std::optional(node(Kind::data, Notation::hexadecimal, digits)) : std::nullopt;
    }

    std::optional<Node> string() {
        const char quote = rest_.empty() ? '\0' : rest_.front();
        if (quote != '"' && quote != '\'') {
            const std::string_view bare = rest_.substr(0, bareCharacters.endOfRun(rest_, 0));
            rest_.remove_prefix(bare.size());
            return bare.empty() ? std::nullopt : std::optional(node(Kind::string, Notation::plain, bare));
        }
        std::size_t end = 1;
        while (end < rest_.size() && rest_[end] != quote) {
            end += rest_[end] == '\\' ? 2 : 1;
        }
        if (end >= rest_.size()) {
            return std::nullopt;
        }
        const std::string_view content = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        return node(Kind::string, Notation::escaped, content);
    }

    Node node(Kind kind, Notation notation, std::string_view content) const {
        return {.kind = kind,
                .notation = notation,
                .count = static_cast<std::uint32_t>(content.size()),
                .content = static_cast<std::uint64_t>(content.data() - tree_.file.bytes().data())};
    }

    PropertyListTree tree_;
    /// The unread rest.
    std::string_view rest_;
    PropertyListCollector collector_;
};

} // namespace

std::optional<PropertyListTree> readTextPropertyList(const Data& text) {
    return Reader(text).read();
}

std::string unescapedPropertyListText(std::string_view text) {
    return Unescaper(text).unescaped();
}

std::string bytesOfHexadecimal(std::string_view digits) {
    std::string bytes;
    std::optional<unsigned> high;
    for (const char digit : digits) {
        const unsigned value = hexadecimalValue(digit);
        if (value == 16) {
            continue;
        }
        if (high) {
            bytes += static_cast<char>(*high << 4U | value);
            high.reset();
        } else {
            high = value;
        }
    }
    return bytes;
}

} // namespace platform
