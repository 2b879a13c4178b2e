// From a view tree to a finished picture.
#pragma once

#include "Host/Drawing/Renderer.h"
#include "Host/Layout/Mirroring.h"
#include "Host/Pictures/Face.h"
#include "Platform/Views/View.h"

namespace host {

/// How the desktop and the user want pictures to be.
struct FaceStyle {
    Appearance appearance;
    /// Device pixels a point.
    double scale = 1;
    Direction direction = Direction::leftToRight;
    friend bool operator==(const FaceStyle&, const FaceStyle&) = default;
};

/// Lays out by what `renderer` measures, mirrored from right to left. `size` is in points.
WidgetLayout layOut(const platform::View& view, Size size, Direction direction, Renderer& renderer);

/// Lays out and draws. `size`, in points, is the family's (`familySize`). What comes from the entry around the view,
/// `widgetURL`, is left for the caller to set. A placeholder has no parts: what it would say is not so.
/// On the renderer's thread.
Face makeFace(const platform::View& view, Size size, const FaceStyle& style, Renderer& renderer);

} // namespace host
