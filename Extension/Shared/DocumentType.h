// The application's document types: an integer code stands for a symbol and for a label. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace foliovault::DocumentType {

/// The symbol that stands for documents of that type; "doc" for a code that means nothing.
std::string_view sfSymbol(std::int64_t code);

/// What documents of that type are called, in the user's language; "Document" for a code that means nothing.
std::string label(std::int64_t code);

} // namespace foliovault::DocumentType
