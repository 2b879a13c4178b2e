#include "Platform/PropertyList/XmlScalars.h"

#include <algorithm>
#include <array>
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
    constexpr std::string_view pattern = "0000-00-00T00:00:00Z";
    if (text.size() != pattern.size()) {
        return std::nullopt;
    }
    // Every character as its distance from the pattern's: 0 to 9 for a digit, 0 for a mark.
    std::array<unsigned char, pattern.size()> digits;
    unsigned char max = 0;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        digits[index] = static_cast<unsigned char>(text[index] - pattern[index]);
        max = std::max(max, digits[index]);
    }
    if (max > 9 || (digits[4] | digits[7] | digits[10] | digits[13] | digits[16] | digits[19]) != 0) {
        return std::nullopt;
    }
    const auto pair = [&digits](std::size_t index) { return digits[index] * 10 + digits[index + 1]; };
    return dateFromCivilTime({.year = pair(0) * 100 + pair(2),
                              .month = pair(5),
                              .day = pair(8),
                              .hour = pair(11),
                              .minute = pair(14),
                              .second = pair(17)});
}

} // namespace platform
