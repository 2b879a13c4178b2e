// Whether there is an application for what a click opens.
#pragma once

#include "Host/Commands/Finding.h"

#include <set>
#include <string>

namespace host {

/// One finding a scheme, of the first sixteen.
Findings checkSchemes(const std::set<std::string>& schemes);

} // namespace host
