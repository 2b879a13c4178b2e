// Letting go of what cairo keeps of fonts that nobody uses any more.
#pragma once

namespace host {

/// Cairo holds on to the 256 scaled fonts that were let go of last, and so to their files; this has fonts of no weight
/// take their places. To be called when the last text for some time is drawn.
void releaseUnusedFonts();

} // namespace host
