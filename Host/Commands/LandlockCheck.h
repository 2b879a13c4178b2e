// Whether the kernel can confine extensions to their files.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// `version` as `landlockVersion` answers.
Finding checkLandlock(int version);

} // namespace host
