// A subsurface over a GTK window with exactly as many pixels as the screen has there.
//
// GTK 3 supports only integer scales. On a fractional one it draws more pixels, and the compositor would scale them
// down and blur letters. The pointer goes through to the window.
#pragma once

#include "Host/Desktop/WaylandObjects.h"
#include "Host/Layout/Geometry.h"

#include <cairo.h>
#include <gdk/gdk.h>

#include <functional>
#include <vector>

namespace host {

class FractionalScaleSurface {
  public:
    /// Returns whether the compositor has the objects that this needs.
    static bool isPossible(const WaylandObjects& objects);

    /// Requires a mapped window. Must be destroyed before the window is unmapped.
    FractionalScaleSurface(const WaylandObjects& objects, GdkWindow* window);
    FractionalScaleSurface(const FractionalScaleSurface&) = delete;
    FractionalScaleSurface& operator=(const FractionalScaleSurface&) = delete;

    /// Shows what `paint` draws, in the window's units, with the window's next frame. `frame` is the window's place on
    /// its screen, in units of `scale` pixels. Returns false without memory.
    bool show(const Rect& frame, double scale, const std::function<void(cairo_t*)>& paint);

  private:
    void release(wl_buffer* buffer);

    const WaylandObjects& objects_;
    /// The compositor may still read these.
    std::vector<WaylandHandle<wl_buffer>> buffers_;
    WaylandHandle<wl_surface> surface_;
    WaylandHandle<wl_subsurface> place_;
    WaylandHandle<wp_viewport> viewport_;
};

} // namespace host
