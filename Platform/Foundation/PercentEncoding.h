// Percent-encoding: bytes that an address cannot hold, as "%" and two hexadecimal digits. Source: RFC 3986, 2.1.
#pragma once

#include "Platform/Foundation/AsciiSet.h"

#include <string>
#include <string_view>

namespace platform {

/// Appends `text` with every byte outside `allowed` written as "%" and two upper-case hexadecimal digits.
void appendPercentEncoded(std::string& out, std::string_view text, const AsciiSet& allowed);

/// `text` with every well-formed "%HH" decoded and everything else as it stands.
std::string percentDecoded(std::string_view text);

/// Whether `text` consists of characters in `allowed` and well-formed "%HH" alone.
bool isPercentEncoded(std::string_view text, const AsciiSet& allowed);

} // namespace platform
