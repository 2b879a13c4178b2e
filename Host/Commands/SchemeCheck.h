// Finds the schemes of the links that a click on a widget may open, and checks whether an application opens them.
#pragma once

#include "Host/Commands/Finding.h"
#include "Host/Connection/Messages.h"

#include <set>
#include <string>
#include <string_view>

namespace host {

/// Returns the scheme of an address in lower case, or an empty text.
std::string schemeOf(std::string_view url);

/// Adds the schemes of the entry's links and of its click address.
void collectSchemes(const Entry& entry, std::set<std::string>& schemes);

/// Returns one finding for each of the first sixteen schemes.
Findings checkSchemes(const std::set<std::string>& schemes);

} // namespace host
