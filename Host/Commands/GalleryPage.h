// The gallery's page: pictures of all widgets, light beside dark.
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Drawing/Appearance.h"

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Returns the page as HTML.
std::string galleryPage(const std::vector<WidgetInfo>& widgets, const std::vector<ColorScheme>& schemes);

/// Returns the name of a picture's file, beside the page.
std::string galleryPictureName(std::string_view kind, std::string_view family, ColorScheme scheme);

} // namespace host
