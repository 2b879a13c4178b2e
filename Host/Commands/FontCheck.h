// Whether there are fonts for what widgets show.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// Returns one finding for the font that widgets are drawn in, and one each for scripts and emoji that it lacks.
Findings checkFonts();

} // namespace host
