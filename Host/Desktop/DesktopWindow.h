// A window without frame that lies on the desktop, under all windows of applications, on every workspace.
//
// `Stacking` keeps it there. It takes the keyboard only when clicked. It is transparent until something is drawn on it,
// where the desktop blends windows.
#pragma once

#include "Host/Desktop/FractionalScaleSurface.h"
#include "Host/Desktop/Objects.h"
#include "Host/Desktop/Outputs.h"
#include "Host/Desktop/Stacking.h"

#include <functional>
#include <optional>

namespace host {

class DesktopWindow {
  public:
    enum class Level {
        /// Under all windows.
        desktop,
        /// Over them, during a drag.
        front,
    };
    enum class Input {
        all,
        /// The pointer reaches what is below.
        none,
    };

    using Paint = std::function<void(cairo_t* cairo)>;

    /// `stacking` must outlive this. `paint` draws the content, in the window's units; without it the window is clear.
    DesktopWindow(Level level, Input input, Stacking& stacking, Paint paint = nullptr);
    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;
    ~DesktopWindow();

    /// The GtkWindow.
    GtkWidget* widget() const { return window_.get(); }

    /// Shows it there; `frame` is on the desktop of all screens.
    void put(const Output& output, const Rect& frame);
    void hide();

    /// Whether what lies below shines through.
    bool isBlended() const;
    /// Blurs what lies behind that part of the window, in its units, where and while the compositor can.
    void blurBehind(RegionHandle region);
    /// Takes the keyboard, at `time` of a click, if no window manager does that.
    void takeKeyboard(guint32 time) const;

  private:
    void move(const Output& output, const Rect& frame);
    bool isUnmanaged() const;
    void realized();
    gboolean draw(cairo_t* cairo);
    bool drawFractional();
    void applyBlur();
    void unmapped();

    Stacking& stacking_;
    Paint paint_;
    Stacking::Way way_;
    WindowHandle window_;
    /// Has no monitor while the window is hidden.
    Output output_;
    Rect frame_;
    std::optional<FractionalScaleSurface> fractional_;
    RegionHandle blurRegion_;
    WaylandHandle<org_kde_kwin_blur> blur_;
};

} // namespace host
