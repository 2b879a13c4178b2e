// The placeholder of a tile whose extension has not answered yet.
#pragma once

#include "Platform/Views/View.h"

#include <string_view>

namespace host {

/// Returns a heading and as many rows as a widget of the family has room for, to be drawn as a placeholder.
platform::View waitingView(std::string_view family);

} // namespace host
