// Starts GTK and shows its message window.
#pragma once

#include <optional>
#include <string>

namespace host {

/// Connects to the display of the environment, in the user's language. Returns one line that says why that failed, if
/// it did. Requires that there are no other threads. GTK has only the style of tiles then, unless the user sets
/// GTK_THEME; `DesktopSettings::readTheme` makes it read the desktop's theme.
std::optional<std::string> startToolkit();

/// Shows a window with what failed, in the user's language, and the system's reason.
void showFailure(const std::string& message, const std::string& reason);

} // namespace host
