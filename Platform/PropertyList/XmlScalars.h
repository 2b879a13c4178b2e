// The scalars that XML property lists write as text.
#pragma once

#include "Platform/Foundation/Date.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

constexpr bool isXmlBlank(char character) {
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

/// An integer between −2^63 and 2^64−1.
struct XmlInteger {
    std::uint64_t magnitude = 0;
    bool isNegative = false;
};

/// Decimal or 0x, with or without a sign; blanks around it do not count. Nothing if `text` is anything else or out of
/// range.
std::optional<XmlInteger> integerFromXml(std::string_view text);

/// Decimal with an exponent or without, inf or nan, with or without a sign; blanks around it do not count.
std::optional<double> realFromXml(std::string_view text);

/// YYYY-MM-DDThh:mm:ssZ and nothing else.
std::optional<Date> dateFromXml(std::string_view text);

} // namespace platform
