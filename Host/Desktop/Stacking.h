// How windows are kept on the desktop, under all others: what the display has for that, and the order among those that
// lie there.
//
// Under X11 a file manager or a shell often draws the desktop and its icons in a window of the desktop type, too, and
// window managers raise it when it is clicked. The windows added here are then raised above it again: once for each
// change of the others, and never above windows that only lie beside them.
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
        /// Windows that the window manager leaves alone, below all others: it does not know the desktop type.
        unmanaged,
        /// There is none: they would lie over all others.
        none,
    };

    /// `changed` is called from the main loop when the way is another one, or windows can be translucent or no more.
    explicit Stacking(std::function<void()> changed);
    Stacking(const Stacking&) = delete;
    Stacking& operator=(const Stacking&) = delete;
    ~Stacking();

    Way way() const { return way_; }
    /// Whether what lies below windows on the desktop shines through them.
    bool isBlended() const { return isBlended_; }

    /// Keeps a GtkWindow on the desktop until it is removed; only needed where the way is `desktopWindows`.
    void add(GtkWidget* window) { windows_.push_back(window); }
    void remove(GtkWidget* window) { std::erase(windows_, window); }

  private:
    static GdkFilterReturn noticeProperty(GdkXEvent* event, GdkEvent* unused, gpointer self);
    void noticeManager();
    void look();
    void raise();
    bool isBuried() const;

    std::function<void()> changed_;
    std::vector<GtkWidget*> windows_;
    Way way_;
    bool isBlended_ = false;
    LaterCall looking_;
    LaterCall raising_;
    /// Of the steady clock, in microseconds.
    gint64 raised_ = 0;
    int contested_ = 0;
};

} // namespace host
