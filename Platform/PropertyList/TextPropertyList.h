// The old text form of property lists.
//
//   value       dictionary | array | data | string
//   dictionary  '{' { string '=' value ';' } '}'
//   array       '(' [ value { ',' value } [','] ] ')'
//   data        '<' hexadecimal digits in pairs, with blanks anywhere '>'
//   string      between double or single quotes, with escapes; or bare: letters, digits and _ $ / : . -
//
// Blanks and comments (// to the end of the line, /* to */) may be between all of these. Escapes are those of C, octal
// numbers, and \U with up to four hexadecimal digits for a unit of UTF-16.
#pragma once

#include "Platform/PropertyList/PropertyListTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Reads the property list in `text`. Returns nothing for other texts. Requires no byte-order mark.
std::optional<PropertyListTree> readTextPropertyList(const Data& text);

/// Returns the value of a quoted string without its quotes. An unknown escape stands for its character.
std::string unescapedPropertyListText(std::string_view text);

/// Returns the bytes of pairs of hexadecimal digits. Skips other characters.
std::string bytesOfHexadecimal(std::string_view digits);

} // namespace platform
