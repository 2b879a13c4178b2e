// The user's reading direction.
#pragma once

#include "Host/Layout/Mirroring.h"

namespace host {

/// Returns the direction of the first language in the environment, by ICU; from left to right without ICU.
Direction userDirection();

} // namespace host
