// The gallery's page: its widgets' pictures, light beside dark, each on a ground of its own.
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Drawing/Appearance.h"

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The page as HTML.
std::string galleryPage(const std::vector<WidgetInfo>& widgets, const std::vector<ColorScheme>& schemes);

/// The name of a picture's file beside the page.
std::string galleryPictureName(std::string_view kind, std::string_view family, ColorScheme scheme);

} // namespace host
