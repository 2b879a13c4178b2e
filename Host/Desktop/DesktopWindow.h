// A window without a frame that lies on the desktop, under all windows of applications, on every workspace.
//
// `Stacking` keeps it there. It takes the keyboard only when clicked. If the desktop blends windows, it is transparent
// where nothing is drawn.
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

    /// Requires that `stacking` outlives this. `paint` draws the content, in the window's units; without it the window
    /// is transparent.
    DesktopWindow(Level level, Input input, Stacking& stacking, Paint paint = nullptr);
    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;
    ~DesktopWindow();

    /// Returns the GtkWindow.
    GtkWidget* widget() const { return window_.get(); }

    /// Shows the window at `frame`, in coordinates of the desktop of all screens.
    void put(const Output& output, const Rect& frame);
    void hide();

    /// Returns whether what lies below shines through.
    bool isBlended() const;
    /// Blurs what lies behind that part of the window, in its units, as long as the compositor supports it.
    void blurBehind(RegionHandle region);
    /// Takes the keyboard if no window manager does. `time` is that of the click.
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
