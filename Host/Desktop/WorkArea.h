// The size of what panels leave of a Wayland screen.
//
// The compositor tells no client where panels are. It stretches two surfaces, a pixel thin, over the width and the
// height that they leave.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Layout/Geometry.h"

#include <functional>

namespace host {

class WorkArea {
  public:
    /// `changed` is called from the main loop when the size is another. The compositor must have the layer shell.
    WorkArea(GdkMonitor* monitor, std::function<void()> changed);
    WorkArea(const WorkArea&) = delete;
    WorkArea& operator=(const WorkArea&) = delete;
    ~WorkArea();

    /// In the screen's units; 0 until the compositor has answered.
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
