// Checks whether an application opens the links of widgets.
#pragma once

#include "Host/Commands/Finding.h"

#include <set>
#include <string>

namespace host {

/// Returns one finding for each of the first sixteen schemes.
Findings checkSchemes(const std::set<std::string>& schemes);

} // namespace host
