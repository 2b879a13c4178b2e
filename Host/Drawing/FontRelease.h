// Releases what cairo keeps of unused fonts.
#pragma once

namespace host {

/// Cairo caches the last 256 unused scaled fonts, and with them their files; creating 256 empty user fonts evicts them.
/// To be called when the last text for some time is drawn.
void releaseUnusedFonts();

} // namespace host
