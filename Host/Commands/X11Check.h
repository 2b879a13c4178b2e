// Whether there is an X server, and on it what widgets' windows depend on.
#pragma once

#include "Host/Commands/Finding.h"

#include <string>

namespace host {

/// Asks the X server named `display`. Waits for it as long as it takes.
Findings checkX11(const std::string& display);

} // namespace host
