// How windows are kept on the desktop, under all others, and in which order.
//
// On X11 a file manager or a shell often draws the desktop and its icons in a window of the desktop type, too, and
// window managers raise it on a click. The windows added here are then raised above it again: once for each change of
// the stacking order, and never above windows that do not cover them.
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

    /// `changed` is called from the main loop when the way, `isBlended` or the work area of an X11 desktop changes: the
    /// window manager sets that later than panels and screens change, and GDK has no signal for it.
    explicit Stacking(std::function<void()> changed);
    Stacking(const Stacking&) = delete;
    Stacking& operator=(const Stacking&) = delete;
    ~Stacking();

    Way way() const { return way_; }
    /// Whether what lies below windows on the desktop shines through them.
    bool isBlended() const { return isBlended_; }

    /// Keeps a GtkWindow on the desktop until it is removed; has an effect on X11 only.
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
    /// Of the steady clock, in microseconds.
    gint64 raised_ = 0;
    int contested_ = 0;
};

} // namespace host
