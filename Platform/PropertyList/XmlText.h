// The characters of an XML element: text, references, CDATA sections, comments and processing instructions.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Passes over an element's characters from `p` on, and answers with the position of the "</" that ends them, or the
/// end of the text; null if a reference means nothing, if a section, a comment or an instruction does not end, or if
/// there is any other tag.
const char* skipXmlText(const char* p, const char* end);

/// The characters that `typed` means, which `skipXmlText` has passed over.
std::string decodedXmlText(std::string_view typed);

/// Passes over the comment or processing instruction at `p`; answers with `p` itself if there is none, and null if it
/// does not end.
const char* skipXmlMiscellany(const char* p, const char* end);

} // namespace platform
