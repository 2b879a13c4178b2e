// The session bus, and who is on it: a running host, the desktop's portal.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// Asks the bus that the environment names; starts none. The portal is started where it is not running but can be, as
/// it would be for the host.
Findings checkBus();

} // namespace host
