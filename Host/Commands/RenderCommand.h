// `widgethost render`: one widget as a picture, its view tree, or the frames of its layout.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Drawing/Appearance.h"

#include <filesystem>
#include <optional>
#include <string>

namespace host {

enum class RenderFormat { png, svg, pdf, tree, frames };

struct RenderRequest {
    EntryRequest entry;
    /// A design-time preview instead of `entry`, in its own family unless `family` names another.
    std::optional<std::string> preview;
    std::optional<std::string> family;
    Appearance appearance;
    double scale = 1;
    RenderFormat format = RenderFormat::png;
    std::optional<std::filesystem::path> output;
};

std::optional<Failure> render(const ExtensionChoice& choice, RenderRequest request);

} // namespace host
