#include "Platform/PropertyList/XmlScalars.h"

#include <charconv>
#include <cstddef>
#include <system_error>

namespace platform {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Whether all of `text` is the number that `parse` (of the from_chars family) reads from it.
template <typename Parse>
bool isWhole(std::string_view text, Parse&& parse) {
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = parse(text.data(), end);
    return result.ec == std::errc() && result.ptr == end;
}

} // namespace

std::optional<XmlInteger> integerFromXml(std::string_view text) {
    constexpr std::uint64_t greatestNegative = std::uint64_t{1} << 63U;
    text = trimmed(text);
    XmlInteger integer{.isNegative = text.starts_with('-')};
    if (integer.isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal) {
        text.remove_prefix(2);
    }
    const bool isRead = isWhole(text, [&integer, isHexadecimal](const char* begin, const char* end) {
        return std::from_chars(begin, end, integer.magnitude, isHexadecimal ? 16 : 10);
    });
    if (!isRead || (integer.isNegative && integer.magnitude > greatestNegative)) {
        return std::nullopt;
    }
    return integer;
}

std::optional<double> realFromXml(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    double real = 0;
    const bool isRead =
        isWhole(text, [&real](const char* begin, const char* end) { return std::from_chars(begin, end, real); });
    if (!isRead) {
        return std::nullopt;
    }
    return real;
}

std::optional<Date> dateFromXml(std::string_view text) {
    constexpr std::string_view pattern = "dddd-dd-ddTdd:dd:ddZ";
    if (text.size() != pattern.size()) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        const char character = text[index];
        if (pattern[index] == 'd' ? character < '0' || character > '9' : character != pattern[index]) {
            return std::nullopt;
        }
    }
    const auto number = [text](std::size_t offset, std::size_t digits) {
        int value = 0;
        for (const char digit : text.substr(offset, digits)) {
            value = value * 10 + (digit - '0');
        }
        return value;
    };
    return dateFromCivilTime({.year = number(0, 4),
                              .month = number(5, 2),
                              .day = number(8, 2),
                              .hour = number(11, 2),
                              .minute = number(14, 2),
                              .second = number(17, 2)});
}

} // namespace platform
