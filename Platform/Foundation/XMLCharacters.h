// The characters that an XML 1.0 document may hold.
#pragma once

#include <string_view>

namespace platform {

/// Whether `text` is UTF-8 throughout, of characters that XML allows: not U+FFFE and U+FFFF, and of the controls below
/// the blank only tab and line ends. Any thread.
bool isXmlText(std::string_view text);

} // namespace platform
