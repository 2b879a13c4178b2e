// A window without frame that lies on the desktop, under all windows of applications, on every workspace.
//
// How it is kept there, `Stacking` says. It takes the keyboard only when clicked. Where windows on the desktop are
// blended with what lies below, it is clear until something is drawn on it.
#pragma once

#include "Host/Desktop/FineSurface.h"
#include "Host/Desktop/Objects.h"
#include "Host/Desktop/Outputs.h"
#include "Host/Desktop/Stacking.h"

#include <functional>
#include <optional>

namespace host {

class DesktopWindow {
  public:
    enum class Level {
        /// Under windows.
        desktop,
        /// Over them, while something is dragged.
        front,
    };
    enum class Input {
        all,
        /// The pointer goes through to what is below.
        none,
    };

    using Paint = std::function<void(cairo_t* cairo)>;

    /// `stacking` must outlive this. `paint` draws what is in it, in its units; without any it stays clear.
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
    /// Takes the keyboard, at `time` of a click in it, where no window manager gives it.
    void takeKeyboard(guint32 time) const;

  private:
    void move(const Output& output, const Rect& frame);
    bool isUnmanaged() const;
    void realized();
    gboolean draw(cairo_t* cairo);
    bool drawFinely();
    void unmapped() { fine_.reset(); }

    Stacking& stacking_;
    Paint paint_;
    Stacking::Way way_;
    WindowHandle window_;
    /// Where it is, and how large; no monitor where it is nowhere.
    Output output_;
    Rect frame_;
    std::optional<FineSurface> fine_;
};

} // namespace host
