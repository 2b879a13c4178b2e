// Texts for a terminal.
#pragma once

#include <string>

namespace host {

/// Replaces control characters, which might move the cursor, by blanks: texts come from extensions and files.
std::string printable(std::string text);

} // namespace host
