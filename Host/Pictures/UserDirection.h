// The direction in which this process's user reads.
#pragma once

#include "Host/Layout/Mirroring.h"

namespace host {

/// By the first of the user's languages, from the environment.
Direction userDirection();

} // namespace host
