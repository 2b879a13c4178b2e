// What a tile shows before anybody knows what it will show.
#pragma once

#include "Platform/Views/View.h"

#include <string_view>

namespace host {

/// Made to be drawn as a placeholder: a heading and some rows, as many as a widget of the family has room for.
platform::View waitingView(std::string_view family);

} // namespace host
