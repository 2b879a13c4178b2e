// A window without frame that lies on the desktop, under all windows of applications, on every workspace.
//
// On Wayland a surface of the layer shell (layer "bottom", reserving nothing); on X a DESKTOP window that is kept
// below; on a compositor without a layer shell an ordinary window, which the user has to put up with. It takes the
// keyboard only when clicked. Where the screen is composited it is clear until something is drawn on it.
#pragma once

#include "Host/Desktop/FineSurface.h"
#include "Host/Desktop/Objects.h"
#include "Host/Desktop/Outputs.h"

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

    /// `paint` draws what is in it, in its units; without any it stays clear.
    DesktopWindow(Level level, Input input, Paint paint = nullptr);
    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;
    ~DesktopWindow();

    /// The GtkWindow.
    GtkWidget* widget() const { return window_.get(); }

    /// Shows it there; `frame` is on the desktop of all screens.
    void put(const Output& output, const Rect& frame);
    void hide();

    /// Whether what lies below shines through.
    bool isComposited() const;

  private:
    void move(const Output& output, const Rect& frame);
    gboolean draw(cairo_t* cairo);
    bool drawFinely();
    void unmapped() { fine_.reset(); }

    Paint paint_;
    WindowHandle window_;
    bool isLayer_;
    /// Where it is, and how large; no monitor where it is nowhere.
    Output output_;
    Rect frame_;
    std::optional<FineSurface> fine_;
};

} // namespace host
