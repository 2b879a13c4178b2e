// Checks the session bus, and whether a host and the desktop's portal are on it.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// Returns findings about the bus that the environment names. Starts no bus, but may start the portal, as the host
/// would.
Findings checkBus();

} // namespace host
