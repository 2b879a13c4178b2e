// Checks whether there are fonts for the text that widgets show.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// Returns one finding for the font that widgets are drawn in, and one for each script, and emoji, that need others.
Findings checkFonts();

} // namespace host
