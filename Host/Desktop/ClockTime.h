// Moments as people read them on a tile.
#pragma once

#include "Platform/Foundation/Date.h"

#include <string>

namespace host {

/// The time of day, "10:42" or "10:42 AM" as the locale has it; the day, where it is not today's. Local time.
std::string shortMoment(platform::Date date, platform::Date now);

} // namespace host
