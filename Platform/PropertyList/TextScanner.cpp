#include "Platform/PropertyList/TextScanner.h"

#include "Platform/Foundation/Unicode.h"
#include "Platform/PropertyList/PropertyList.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace platform {

namespace {

bool isBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool isBare(char character) {
    const char lower = static_cast<char>(character | 0x20);
    return (lower >= 'a' && lower <= 'z') || (character >= '0' && character <= '9') ||
           std::string_view("_$/:.-").find(character) != std::string_view::npos;
}

bool isQuote(char character) {
    return character == '"' || character == '\'';
}

/// The value of a hexadecimal digit, 16 for anything else.
unsigned digitValue(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<unsigned>(character - '0');
    }
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

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
    /// Reads what follows a backslash; what is no escape means itself.
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

    char32_t readNumber(unsigned base, std::size_t mostDigits) {
        char32_t number = 0;
        for (; mostDigits > 0 && !rest_.empty() && digitValue(rest_.front()) < base; --mostDigits) {
            number = number * base + digitValue(rest_.front());
            rest_.remove_prefix(1);
        }
        return number;
    }

    std::string_view rest_;
};

} // namespace

const char* TextScanner::skipBlanks(const char* p) const {
    for (;;) {
        p = std::find_if_not(p, end_, isBlank);
        const std::string_view rest(p, static_cast<std::size_t>(end_ - p));
        if (rest.starts_with("//")) {
            p += std::min(rest.find_first_of("\r\n"), rest.size());
        } else if (rest.starts_with("/*")) {
            const std::size_t stop = rest.find("*/", 2);
            if (stop == std::string_view::npos) {
                return nullptr;
            }
            p += stop + 2;
        } else {
            return p;
        }
    }
}

const char* TextScanner::skipMark(const char* p, char mark) const {
    p = skipBlanks(p);
    return p != nullptr && isAt(p, mark) ? skipBlanks(p + 1) : nullptr;
}

const char* TextScanner::skipValue(const char* p, int depth) const {
    if (p == end_) {
        return nullptr;
    }
    switch (*p) {
    case '{':
        return skipDictionary(p, depth + 1);
    case '(':
        return skipArray(p, depth + 1);
    case '<':
        return skipData(p);
    default:
        return skipString(p);
    }
}

const char* TextScanner::skipDictionary(const char* p, int depth) const {
    if (depth > PropertyList::greatestDepth) {
        return nullptr;
    }
    p = skipBlanks(p + 1);
    while (p != nullptr && !isAt(p, '}')) {
        p = skipString(p);
        if (p != nullptr) {
            p = skipMark(p, '=');
        }
        if (p != nullptr) {
            p = skipValue(p, depth);
        }
        if (p != nullptr) {
            p = skipMark(p, ';');
        }
    }
    return p == nullptr ? nullptr : p + 1;
}

const char* TextScanner::skipArray(const char* p, int depth) const {
    if (depth > PropertyList::greatestDepth) {
        return nullptr;
    }
    p = skipBlanks(p + 1);
    while (p != nullptr && !isAt(p, ')')) {
        p = skipValue(p, depth);
        if (p != nullptr) {
            p = skipBlanks(p);
        }
        if (p != nullptr && !isAt(p, ')')) {
            p = skipMark(p, ',');
        }
    }
    return p == nullptr ? nullptr : p + 1;
}

const char* TextScanner::skipData(const char* p) const {
    std::size_t digits = 0;
    for (++p; p < end_ && *p != '>'; ++p) {
        if (digitValue(*p) < 16) {
            ++digits;
        } else if (!isBlank(*p)) {
            return nullptr;
        }
    }
    return p == end_ || digits % 2 != 0 ? nullptr : p + 1;
}

const char* TextScanner::skipString(const char* p) const {
    if (p == end_) {
        return nullptr;
    }
    if (!isQuote(*p)) {
        const char* const stop = std::find_if_not(p, end_, isBare);
        return stop == p ? nullptr : stop;
    }
    const char quote = *p;
    for (++p; p < end_ && *p != quote; ++p) {
        if (*p == '\\' && ++p == end_) {
            return nullptr;
        }
    }
    return p == end_ ? nullptr : p + 1;
}

std::string TextScanner::string(const char* p) const {
    const std::string_view typed(p, static_cast<std::size_t>(skipString(p) - p));
    if (!isQuote(typed.front())) {
        return std::string(typed);
    }
    return Unescaper(typed.substr(1, typed.size() - 2)).unescaped();
}

std::string TextScanner::data(const char* p) const {
    std::string bytes;
    std::optional<unsigned> high;
    for (const char digit : std::string_view(p, static_cast<std::size_t>(skipData(p) - p))) {
        const unsigned value = digitValue(digit);
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
