// Releases the fonts that cairo caches.
#pragma once

namespace host {

/// Cairo caches the last 256 unused scaled fonts, and with them their files; creating 256 empty user fonts evicts them.
/// For calling after the last text for some time.
void releaseUnusedFonts();

} // namespace host
