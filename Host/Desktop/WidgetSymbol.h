// The symbol that stands for a widget.
#pragma once

#include "Platform/Views/View.h"

#include <optional>
#include <string>

namespace host {

/// The first symbol of the view outside of links and frames: symbols in those stand for items, in a column of a fixed
/// width.
std::optional<std::string> widgetSymbolIn(const platform::View& view);

} // namespace host
