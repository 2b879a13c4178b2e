// A widget's finished picture and what is on it: all that a window needs to show a tile, to react to clicks and keys,
// and to be read aloud. A value, without any effects.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Host/Layout/LayoutParts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

struct Face {
    /// 0xAARRGGBB, premultiplied with alpha, as cairo has it: row after row without gaps, width × height of them.
    std::vector<std::uint32_t> pixels;
    /// In device pixels. 0 where a picture of the size that was asked for cannot be made.
    int width = 0;
    int height = 0;
    /// Device pixels a point.
    double scale = 1;
    Appearance appearance;
    std::vector<LayoutPart> parts;
    /// Where a click that meets no link goes.
    std::optional<std::string> widgetURL;
    friend bool operator==(const Face&, const Face&) = default;
};

} // namespace host
