// Starting the toolkit, and its own small windows.
#pragma once

#include <optional>
#include <string>

namespace host {

/// Connects to the display of the environment, in the user's language. Nothing where that is done; else why not, in one
/// clear line. Call once, at start, before other threads. The toolkit then has the style of tiles alone, but for a
/// user's GTK_THEME; DesktopSettings has it read the theme.
std::optional<std::string> startToolkit();

/// Tells the user what could not be done, in a window: in the user's words, and the reason in the system's.
void showFailure(const std::string& message, const std::string& reason);

} // namespace host
