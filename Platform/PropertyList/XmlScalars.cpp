#include "Platform/PropertyList/XmlScalars.h"

#include <charconv>
#include <cstddef>
#include <system_error>

namespace platform {

namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isXmlBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isXmlBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
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
    constexpr std::uint64_t maxNegative = std::uint64_t{1} << 63U;
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
    if (!isRead || (integer.isNegative && integer.magnitude > maxNegative)) {
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
    constexpr std::size_t size = std::string_view("0000-00-00T00:00:00Z").size();
    const bool isStrict = text.size() == size && text[10] == 'T' && text.back() == 'Z';
    return isStrict ? fromRfc3339(text) : std::nullopt;
}

} // namespace platform
