// Texts for a terminal.
#pragma once

#include <string>
#include <string_view>

namespace host {

/// Texts come from elsewhere: what would move the cursor becomes a blank.
std::string printable(std::string text);

/// How many columns a text in UTF-8 takes, a character for a column.
std::size_t columnsOf(std::string_view text);

} // namespace host
