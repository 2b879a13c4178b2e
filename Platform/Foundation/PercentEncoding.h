// Percent-encoding of bytes that an address cannot hold. Source: RFC 3986, 2.1.
#pragma once

#include "Platform/Foundation/AsciiSet.h"

#include <string>
#include <string_view>

namespace platform {

/// Appends `text` with every byte outside of `allowed` as "%" and two upper-case hexadecimal digits.
void appendPercentEncoded(std::string& out, std::string_view text, const AsciiSet& allowed);

/// Decodes every well-formed "%HH" and leaves everything else unchanged.
std::string percentDecoded(std::string_view text);

/// Returns whether `text` has only characters in `allowed` and well-formed "%HH".
bool isPercentEncoded(std::string_view text, const AsciiSet& allowed);

} // namespace platform
