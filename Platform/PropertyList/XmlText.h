// The characters of an XML element: text, references, CDATA sections, comments and processing instructions.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Returns the size of an element's characters: up to the "</" that ends them, or all. Returns nothing if a reference
/// is invalid, if a section, a comment or an instruction does not end, or at any other tag.
std::optional<std::size_t> xmlTextSize(std::string_view text);

/// Returns the characters of `text`. Requires that `xmlTextSize` returned its size.
std::string decodedXmlText(std::string_view text);

/// Returns the size of the comment or processing instruction at the beginning of `text`; 0 for any other beginning,
/// nothing if it does not end.
std::optional<std::size_t> xmlMiscellanySize(std::string_view text);

} // namespace platform
