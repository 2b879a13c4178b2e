// Checks what shows the widgets' windows.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// Checks the Wayland compositor that the environment names, and the X server if windows are X11 windows. Blocks until
/// they answer. Uses the toolkit: call from one thread only.
Findings checkDisplay();

} // namespace host
