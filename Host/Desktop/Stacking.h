// How windows are kept on the desktop, under all others, and in which order.
//
// On X11, file managers and shells often draw the desktop and its icons in a window of the desktop type, too, and window
// managers raise it on a click. The windows added here are then raised above it: once for each change of the stacking
// order, and only if one of them is covered.
#pragma once

#include "Host/Desktop/Objects.h"

#include <functional>
#include <string>
#include <vector>

namespace host {

class Stacking {
  public:
    enum class Way {
        /// Surfaces of the layer shell, in its layer "bottom".
        layerShell,
        /// Windows of the desktop type.
        desktopWindows,
        /// Override-redirect windows, lowered below all others: the window manager does not support the desktop type.
        unmanaged,
        /// No windows: they would lie over all others.
        none,
    };

    /// Calls `changed` from the main loop when the way, `isBlended` or the work area of an X11 desktop changes. GDK has no
    /// signal for the last, which window managers set some time after panels and screens change.
    explicit Stacking(std::function<void()> changed);
    Stacking(const Stacking&) = delete;
    Stacking& operator=(const Stacking&) = delete;
    ~Stacking();

    Way way() const { return way_; }
    /// Returns whether what lies below windows on the desktop shines through them.
    bool isBlended() const { return isBlended_; }

    /// Keeps a GtkWindow on the desktop until it is removed. No effect on Wayland.
    void add(GtkWidget* window) { windows_.push_back(window); }
    void remove(GtkWidget* window) { std::erase(windows_, window); }

  private:
    static GdkFilterReturn onRootProperty(GdkXEvent* event, GdkEvent* unused, gpointer self);
    void onManagerChanged();
    void update();
    void raise();
    bool isBuried() const;

    std::function<void()> changed_;
    std::vector<GtkWidget*> windows_;
    Way way_;
    bool isBlended_ = false;
    ScheduledCall updating_;
    ScheduledCall raising_;
    /// The time of the last raise by the monotonic clock, in microseconds.
    gint64 raised_ = 0;
    int contested_ = 0;
};

} // namespace host
