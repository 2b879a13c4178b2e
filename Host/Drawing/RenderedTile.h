// A widget's finished picture and its accessible items: all that a window needs to show a tile, to handle clicks and
// keys, and for screen readers.
#pragma once

#include "Host/Drawing/Renderer.h"
#include "Host/Layout/AccessibleItems.h"
#include "Host/Layout/Mirroring.h"
#include "Platform/Views/View.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// The desktop's and the user's choices for pictures.
struct TileStyle {
    Appearance appearance;
    /// Device pixels per point.
    double scale = 1;
    Direction direction = Direction::leftToRight;
    friend bool operator==(const TileStyle&, const TileStyle&) = default;
};

struct RenderedTile {
    /// Empty if a picture of the requested size cannot be made.
    PixelBuffer picture;
    /// Device pixels per point.
    double scale = 1;
    Appearance appearance;
    std::vector<AccessibleItem> items;
    /// Opened by a click beside all links.
    std::optional<std::string> widgetURL;
};

/// Lays out with the measurers of `renderer`, mirrored for right to left. `size` is in points.
WidgetLayout layOut(const platform::View& view, Size size, Direction direction, Renderer& renderer);

/// Lays out and draws. `size`, in points, is the family's (`familySize`). The caller sets `widgetURL`, which is in the
/// entry around the view. A placeholder has no items, since its texts are not real. Called on the renderer's thread.
RenderedTile renderTile(const platform::View& view, Size size, const TileStyle& style, Renderer& renderer);

} // namespace host
