// The text of `explain` about a tile: what it shows, its last reload and how long that took, its last failure and the
// reason, and the date of the next try.
#pragma once

#include "Host/Session/Tile.h"
#include "Platform/Foundation/Date.h"

#include <string>

namespace host {

/// Returns several lines, each with a newline, in this process's time zone.
std::string explanation(const Tile& tile, platform::Date now);

} // namespace host
