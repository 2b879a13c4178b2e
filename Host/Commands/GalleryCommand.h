// `widgethost gallery`: every widget in every family as pictures in a folder, with a page that shows them.
//
// Pictures show timelines with the default configuration at two device pixels per point, widgets in the order of their
// bundle. The page, index.html, needs nothing outside its folder.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Drawing/Appearance.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace host {

struct GalleryRequest {
    std::filesystem::path folder;
    /// Each widget is drawn once per scheme.
    std::vector<ColorScheme> schemes;
    Contrast contrast = Contrast::normal;
};

std::optional<Failure> gallery(const ExtensionChoice& choice, const GalleryRequest& request);

} // namespace host
