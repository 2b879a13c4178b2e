// The application's document types: an integer code stands for a symbol and for a label. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace foliovault::DocumentType {

/// Returns the symbol of that type; "doc" for an unknown code.
std::string_view sfSymbol(std::int64_t code);

/// Returns the label of that type, in the user's language; "Document" for an unknown code.
std::string label(std::int64_t code);

} // namespace foliovault::DocumentType
