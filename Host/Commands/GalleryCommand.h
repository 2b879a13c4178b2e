// `widgethost gallery`: every widget in every family as pictures in a folder, with a page that shows them.
//
// The pictures are timelines with the default configuration, widgets in the order of their bundle, at two device pixels
// a point. The page, index.html, needs nothing but its folder.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Drawing/Appearance.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace host {

struct GalleryRequest {
    std::filesystem::path folder;
    /// Every widget is drawn in each of them.
    std::vector<ColorScheme> schemes;
    Contrast contrast = Contrast::normal;
};

std::optional<Failure> gallery(const ExtensionChoice& choice, const GalleryRequest& request);

} // namespace host
