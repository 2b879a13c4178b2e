#include "Platform/PropertyList/XmlText.h"

#include "Platform/Foundation/ByteScan.h"
#include "Platform/Foundation/Unicode.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace platform {

namespace {

constexpr std::array<std::pair<std::string_view, char32_t>, 5> entities = {{
    {"amp", U'&'},
    {"lt", U'<'},
    {"gt", U'>'},
    {"quot", U'"'},
    {"apos", U'\''},
}};

unsigned digitValue(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<unsigned>(character - '0');
    }
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

/// The character that a reference without its '&' and ';' means; U+0000 if it means none.
char32_t referenced(std::string_view name) {
    if (!name.starts_with('#')) {
        const auto* const entity = std::find_if(entities.begin(), entities.end(),
                                                [name](const auto& candidate) { return candidate.first == name; });
        return entity == entities.end() ? 0 : entity->second;
    }
    name.remove_prefix(1);
    const unsigned base = name.starts_with('x') ? 16 : 10;
    if (base == 16) {
        name.remove_prefix(1);
    }
    char32_t character = 0;
    for (const char digit : name) {
        if (digitValue(digit) >= base) {
            return 0;
        }
        character = character * base + digitValue(digit);
        if (character > 0x10FFFF) {
            return 0;
        }
    }
    return isCharacter(character) ? character : 0;
}

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// The position after the next `terminator`, or null.
const char* skipPast(const char* p, const char* end, std::string_view terminator) {
    const std::size_t found = between(p, end).find(terminator);
    return found == std::string_view::npos ? nullptr : p + found + terminator.size();
}

/// Tells `sink` of the characters one after the other: pieces of the text, and what the references mean.
template <typename Sink>
const char* walkText(const char* p, const char* end, Sink&& sink) {
    constexpr std::string_view sectionStart = "<![CDATA[";
    constexpr std::string_view sectionEnd = "]]>";
    for (;;) {
        const char* const mark = findXmlMark(p, end);
        sink(between(p, mark));
        p = mark;
        const std::string_view rest = between(p, end);
        if (rest.empty() || rest.starts_with("</")) {
            return p;
        }
        if (rest.front() == '&') {
            const std::size_t stop = rest.find(';');
            const char32_t character = stop == std::string_view::npos ? 0 : referenced(rest.substr(1, stop - 1));
            if (character == 0) {
                return nullptr;
            }
            sink(character);
            p += stop + 1;
        } else if (rest.starts_with(sectionStart)) {
            const char* const start = p + sectionStart.size();
            p = skipPast(start, end, sectionEnd);
            if (p == nullptr) {
                return nullptr;
            }
            sink(between(start, p - sectionEnd.size()));
        } else {
            p = skipXmlMiscellany(p, end);
            if (p == nullptr || p == mark) {
                return nullptr;
            }
        }
    }
}

} // namespace

const char* skipXmlText(const char* p, const char* end) {
    return walkText(p, end, [](const auto& /*characters*/) {});
}

std::string decodedXmlText(std::string_view typed) {
    struct Appender {
        std::string text;
        void operator()(std::string_view piece) { text += piece; }
        void operator()(char32_t character) { appendUtf8(text, character); }
    };
    Appender appender;
    walkText(typed.data(), typed.data() + typed.size(), appender);
    return std::move(appender.text);
}

const char* skipXmlMiscellany(const char* p, const char* end) {
    const std::string_view rest = between(p, end);
    if (rest.starts_with("<!--")) {
        return skipPast(p + 4, end, "-->");
    }
    if (rest.starts_with("<?")) {
        return skipPast(p + 2, end, "?>");
    }
    return p;
}

} // namespace platform
