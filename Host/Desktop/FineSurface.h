// A surface over a window of the toolkit that has exactly as many pixels as the screen has there. The toolkit knows
// whole scales only: at others it draws more, and the compositor's making them fewer blurs letters. The pointer goes
// through to the window.
#pragma once

#include "Host/Desktop/WaylandObjects.h"
#include "Host/Layout/Geometry.h"

#include <cairo.h>
#include <gdk/gdk.h>

#include <functional>
#include <vector>

namespace host {

class FineSurface {
  public:
    /// Whether the compositor has what it takes.
    static bool isPossible(const WaylandObjects& objects);

    /// Over `window`, which is on the screen; it is to end before that leaves it.
    FineSurface(const WaylandObjects& objects, GdkWindow* window);
    FineSurface(const FineSurface&) = delete;
    FineSurface& operator=(const FineSurface&) = delete;

    /// Shows what `paint` draws, in the window's units, together with the next that the window itself shows. `frame` is
    /// where that lies on its screen, in units, of which each has `scale` pixels. False where there is no memory.
    bool show(const Rect& frame, double scale, const std::function<void(cairo_t*)>& paint);

  private:
    void release(wl_buffer* buffer);

    const WaylandObjects& objects_;
    /// Those that the compositor may still read.
    std::vector<WaylandHandle<wl_buffer>> buffers_;
    WaylandHandle<wl_surface> surface_;
    WaylandHandle<wl_subsurface> place_;
    WaylandHandle<wp_viewport> viewport_;
};

} // namespace host
