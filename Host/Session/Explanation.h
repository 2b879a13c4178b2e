// What `explain` says about a tile: what it shows, when it last reloaded and how long that took, what failed and why,
// and when it is tried next.
#pragma once

#include "Host/Session/Tile.h"
#include "Platform/Foundation/Date.h"

#include <string>

namespace host {

/// Several lines, each ended, in the local time of this process.
std::string explanation(const Tile& tile, platform::Date now);

} // namespace host
