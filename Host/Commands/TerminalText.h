// Text for a terminal.
#pragma once

#include <string>

namespace host {

/// Replaces control characters by blanks. Text from extensions and files could move the cursor.
std::string printable(std::string text);

} // namespace host
