// Checks of the machine that widgets are shown on, each by its findings.
#pragma once

#include "Host/Commands/Finding.h"
#include "Host/Connection/Manifest.h"

#include <filesystem>

namespace host {

/// Checks the session bus that the environment names, and whether a host and the desktop's portal are on it. Starts no
/// bus, but may start the portal, as the host would.
Findings checkBus();

/// Checks the data that the extension may read, by one finding for each folder below `home` that the manifest names:
/// whether its regular files can be opened. Reads no contents.
Findings checkData(const Manifest& manifest, const std::filesystem::path& home);

/// Checks the Wayland compositor that the environment names, and the X server if windows are X11 windows. Blocks until
/// they answer. Uses the toolkit: call from one thread only.
Findings checkDisplay();

/// Checks the font that widgets are drawn in, and for each script that needs another, and for emoji, whether there is
/// one.
Findings checkFonts();

} // namespace host
