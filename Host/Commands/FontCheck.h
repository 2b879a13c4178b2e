// Whether there are fonts for what widgets show.
#pragma once

#include "Host/Commands/Finding.h"

namespace host {

/// One finding for the font that widgets are drawn in, and one each for scripts and emoji that it does not have.
Findings checkFonts();

} // namespace host
