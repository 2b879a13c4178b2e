// `widgethost gallery`: every widget in every family as pictures in a folder, with a page that shows them.
//
// The pictures are timelines with the default configuration, widgets in the order of their bundle, light and dark, at
// two device pixels a point. The page, index.html, needs nothing but its folder.
#pragma once

#include "Host/Commands/Extensions.h"

#include <filesystem>
#include <optional>

namespace host {

std::optional<Failure> gallery(const ExtensionChoice& choice, const std::filesystem::path& folder);

} // namespace host
