// Whether there is a Wayland compositor, and whether it lets windows lie under all others.
#pragma once

#include "Host/Doctor/Finding.h"

#include <string>

namespace host {

/// Asks the compositor named `display`, which WAYLAND_DISPLAY must name too. Waits for it as long as it takes.
Findings checkWayland(const std::string& display);

} // namespace host
