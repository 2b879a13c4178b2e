// A widget's finished picture and what is on it: all that a window needs to show a tile, to react to clicks and keys,
// and to be read aloud.
#pragma once

#include "Host/Drawing/Renderer.h"
#include "Host/Layout/AccessibleItems.h"
#include "Host/Layout/Mirroring.h"
#include "Platform/Views/View.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// How the desktop and the user want pictures to be.
struct TileStyle {
    Appearance appearance;
    /// Device pixels per point.
    double scale = 1;
    Direction direction = Direction::leftToRight;
    friend bool operator==(const TileStyle&, const TileStyle&) = default;
};

struct RenderedTile {
    /// No picture if one of the requested size cannot be made.
    PixelBuffer picture;
    /// Device pixels per point.
    double scale = 1;
    Appearance appearance;
    std::vector<AccessibleItem> items;
    /// Where a click that meets no link goes.
    std::optional<std::string> widgetURL;
};

/// Lays out with the measurers of `renderer`, mirrored for right to left. `size` is in points.
WidgetLayout layOut(const platform::View& view, Size size, Direction direction, Renderer& renderer);

/// Lays out and draws. `size`, in points, is the family's (`familySize`). The caller sets `widgetURL`, which comes from
/// the entry around the view. A placeholder has no items: what they would say is not true. Called on the renderer's
/// thread.
RenderedTile renderTile(const platform::View& view, Size size, const TileStyle& style, Renderer& renderer);

} // namespace host
