// What widgets' windows are shown by.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// The Wayland compositor that the environment names; or the X server, where it names none or that one is not there.
/// Waits for it as long as it takes.
Findings checkDisplay();

} // namespace host
