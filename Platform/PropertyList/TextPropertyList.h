// The old text form of property lists.
//
//   value       dictionary | array | data | string
//   dictionary  '{' { string '=' value ';' } '}'
//   array       '(' [ value { ',' value } [','] ] ')'
//   data        '<' hexadecimal digits in pairs, with blanks anywhere '>'
//   string      between double or single quotes, with escapes; or bare: letters, digits and _ $ / : . -
//
// Blanks and comments (// to the end of the line, /* to */) may stand between all of these. Escapes are those of C,
// octal numbers and \U with up to four hexadecimal digits, which are a unit of UTF-16.
#pragma once

#include "Platform/PropertyList/PropertyListTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The property list in `text`, which is UTF-8 without a byte-order mark. Nothing for any other text.
std::optional<PropertyListTree> readTextPropertyList(const Data& text);

/// What a quoted string means, given without its quotes. An unknown escape means its character.
std::string unescapedPropertyListText(std::string_view text);

/// The bytes of pairs of hexadecimal digits; anything else between them is passed over.
std::string bytesOfHexadecimal(std::string_view digits);

} // namespace platform
