// The characters of an XML element: text, references, CDATA sections, comments and processing instructions.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// How many bytes of `text` are an element's characters: up to the "</" that ends them, or all. Nothing if a reference
/// names no character, if a section, a comment or an instruction does not end, or at any other tag.
std::optional<std::size_t> xmlTextSize(std::string_view text);

/// The characters that `text` stands for, all of which `xmlTextSize` has counted.
std::string decodedXmlText(std::string_view text);

/// How many bytes the comment or processing instruction has that `text` begins with; 0 if it begins with something
/// else, nothing if it does not end.
std::optional<std::size_t> xmlMiscellanySize(std::string_view text);

} // namespace platform
