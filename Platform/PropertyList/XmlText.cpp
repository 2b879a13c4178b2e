#include "Platform/PropertyList/XmlText.h"

#include "Platform/Foundation/AsciiSet.h"
#include "Platform/Foundation/Utf8.h"

#include <algorithm>
#include <array>
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

/// Returns the character of a reference without its '&' and ';'; U+0000 for an invalid one.
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
        if (hexadecimalValue(digit) >= base) {
            return 0;
        }
        character = character * base + hexadecimalValue(digit);
        if (character > 0x10FFFF) {
            return 0;
        }
    }
    return isCharacter(character) ? character : 0;
}

/// Returns the size from `start`, with which `text` begins, through `end`; nothing if it does not end.
std::optional<std::size_t> sizeThrough(std::string_view text, std::string_view start, std::string_view end) {
    const std::size_t found = text.find(end, start.size());
    return found == std::string_view::npos ? std::nullopt : std::optional(found + end.size());
}

/// Calls `sink` with the characters in order: pieces of the text, and the characters of references. Returns the same as
/// `xmlTextSize`.
template <typename Sink>
std::optional<std::size_t> walkText(std::string_view text, Sink&& sink) {
    constexpr std::string_view sectionStart = "<![CDATA[";
    constexpr std::string_view sectionEnd = "]]>";
    for (std::size_t at = 0;;) {
        const std::size_t mark = std::min(text.find_first_of("<&", at), text.size());
        sink(text.substr(at, mark - at));
        at = mark;
        const std::string_view rest = text.substr(at);
        if (rest.empty() || rest.starts_with("</")) {
            return at;
        }
        std::optional<std::size_t> size;
        if (rest.front() == '&') {
            size = sizeThrough(rest, "&", ";");
            const char32_t character = size ? referenced(rest.substr(1, *size - 2)) : 0;
            if (character == 0) {
                return std::nullopt;
            }
            sink(character);
        } else if (rest.starts_with(sectionStart)) {
            size = sizeThrough(rest, sectionStart, sectionEnd);
            if (size) {
                sink(rest.substr(sectionStart.size(), *size - sectionStart.size() - sectionEnd.size()));
            }
        } else {
            size = xmlMiscellanySize(rest);
        }
        if (size.value_or(0) == 0) {
            return std::nullopt;
        }
        at += *size;
    }
}

} // namespace

std::optional<std::size_t> xmlTextSize(std::string_view text) {
    return walkText(text, [](const auto& /*characters*/) {});
}

std::string decodedXmlText(std::string_view text) {
    struct Appender {
        std::string text;
        void operator()(std::string_view piece) { text += piece; }
        void operator()(char32_t character) { appendUtf8(text, character); }
    };
    Appender appender;
    walkText(text, appender);
    return std::move(appender.text);
}

std::optional<std::size_t> xmlMiscellanySize(std::string_view text) {
    return text.starts_with("<!--") ? sizeThrough(text, "<!--", "-->")
           : text.starts_with("<?") ? sizeThrough(text, "<?", "?>")
                                    : 0;
}

} // namespace platform
