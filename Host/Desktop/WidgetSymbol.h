// A widget's symbol in the gallery's list.
#pragma once

#include "Platform/Views/View.h"

#include <optional>
#include <string>

namespace host {

/// Returns the first symbol of the view outside of links and frames. Symbols inside them stand for items.
std::optional<std::string> widgetSymbolIn(const platform::View& view);

} // namespace host
