// Starts GTK and shows its message window.
#pragma once

#include <optional>
#include <string>

namespace host {

/// Connects to the display of the environment, in the user's language. Returns the reason for a failure, in one line.
/// Requires that there are no other threads. Unless the user sets GTK_THEME, GTK has only the style of tiles until
/// `DesktopSettings::readTheme`, and on Wayland only its own cursors until `readCursorTheme`.
std::optional<std::string> startToolkit();

/// Makes GTK read the theme's cursors, if it has not. No earlier than needed: it takes longer than drawing the tiles.
void readCursorTheme();

/// Shows a window with a message in the user's language, and the system's reason.
void showFailure(const std::string& message, const std::string& reason);

} // namespace host
