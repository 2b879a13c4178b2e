// The direction in which this process's user reads.
#pragma once

#include "Host/Layout/Mirroring.h"

namespace host {

/// By the first of the user's languages, from the environment, as ICU has it; from left to right without ICU.
Direction userDirection();

} // namespace host
