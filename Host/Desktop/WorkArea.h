// The size of a Wayland screen without its panels.
//
// Compositors do not report panels to clients. Two surfaces, one pixel thin, are stretched by the compositor over the
// width and the height that the panels leave.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Layout/Geometry.h"

#include <functional>

namespace host {

class WorkArea {
  public:
    /// Calls `changed` from the main loop when the size changes. Requires a compositor with layer shell.
    WorkArea(GdkMonitor* monitor, std::function<void()> changed);
    WorkArea(const WorkArea&) = delete;
    WorkArea& operator=(const WorkArea&) = delete;
    ~WorkArea();

    /// Returns the size in the screen's units; 0 until the compositor has answered.
    const Size& size() const { return size_; }

  private:
    void onWidth(GdkRectangle* allocation) { update({static_cast<double>(allocation->width), size_.height}); }
    void onHeight(GdkRectangle* allocation) { update({size_.width, static_cast<double>(allocation->height)}); }
    void update(const Size& size);

    std::function<void()> changed_;
    Size size_;
    WindowHandle horizontal_;
    WindowHandle vertical_;
};

} // namespace host
