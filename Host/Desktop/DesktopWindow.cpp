#include "Host/Desktop/DesktopWindow.h"

#include <gdk/gdkwayland.h>
#include <gdk/gdkx.h>
#include <gtk-layer-shell.h>

#include <cmath>
#include <utility>

namespace host {
namespace {

/// The first version with "on demand": the keyboard on a click. Earlier ones treat "exclusive" so on lower layers.
constexpr guint onDemandVersion = 4;

int whole(double length) {
    return static_cast<int>(std::lround(length));
}

GtkLayerShellKeyboardMode keyboardMode(DesktopWindow::Input input) {
    if (input == DesktopWindow::Input::none) {
        return GTK_LAYER_SHELL_KEYBOARD_MODE_NONE;
    }
    return gtk_layer_get_protocol_version() >= onDemandVersion ? GTK_LAYER_SHELL_KEYBOARD_MODE_ON_DEMAND
                                                               : GTK_LAYER_SHELL_KEYBOARD_MODE_EXCLUSIVE;
}

} // namespace

DesktopWindow::DesktopWindow(Level level, Input input, Stacking& stacking, Paint paint)
    : stacking_(stacking), paint_(std::move(paint)), way_(stacking.way()),
      // The front level needs no window manager.
      window_(gtk_window_new(level == Level::front && way_ != Stacking::Way::layerShell ? GTK_WINDOW_POPUP
                                                                                        : GTK_WINDOW_TOPLEVEL)) {
    GtkWindow* window = GTK_WINDOW(window_.get());
    gtk_widget_set_app_paintable(window_.get(), TRUE);
    if (GdkVisual* visual = gdk_screen_get_rgba_visual(gtk_widget_get_screen(window_.get())); visual != nullptr) {
        gtk_widget_set_visual(window_.get(), visual);
    }
    gtk_window_set_decorated(window, FALSE);
    gtk_window_set_resizable(window, FALSE);
    if (way_ == Stacking::Way::layerShell) {
        gtk_layer_init_for_window(window);
        gtk_layer_set_namespace(window, "widgethost");
        gtk_layer_set_layer(window, level == Level::front ? GTK_LAYER_SHELL_LAYER_TOP : GTK_LAYER_SHELL_LAYER_BOTTOM);
        // Without an exclusive zone the window lies beside panels, and its margins count from their edges.
        gtk_layer_set_anchor(window, GTK_LAYER_SHELL_EDGE_LEFT, TRUE);
        gtk_layer_set_anchor(window, GTK_LAYER_SHELL_EDGE_TOP, TRUE);
        gtk_layer_set_keyboard_mode(window, keyboardMode(input));
    } else if (level == Level::front) {
        gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_DND);
    } else {
        gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_DESKTOP);
        gtk_window_set_keep_below(window, TRUE);
        gtk_window_stick(window);
        gtk_window_set_skip_taskbar_hint(window, TRUE);
        gtk_window_set_skip_pager_hint(window, TRUE);
        gtk_window_set_focus_on_map(window, FALSE);
        gtk_window_set_accept_focus(window, input == Input::all);
        // Keeps the window manager from placing it where it finds room.
        gtk_window_set_gravity(window, GDK_GRAVITY_STATIC);
        connect<&DesktopWindow::realized>(window_.get(), "realize", this);
        stacking_.add(window_.get());
    }
    if (input == Input::none) {
        const RegionHandle nothing(cairo_region_create());
        gtk_widget_input_shape_combine_region(window_.get(), nothing.get());
    }
    // The compositor closes a layer surface with its screen; `put` shows it again on another.
    g_signal_connect(window_.get(), "delete-event", G_CALLBACK(&gtk_widget_hide_on_delete), nullptr);
    connect<&DesktopWindow::draw>(window_.get(), "draw", this);
    connect<&DesktopWindow::unmapped>(window_.get(), "unmap", this);
}

DesktopWindow::~DesktopWindow() {
    stacking_.remove(window_.get());
    g_signal_handlers_disconnect_by_data(window_.get(), this);
}

void DesktopWindow::put(const Output& output, const Rect& frame) {
    // At another scale the same place has other pixels.
    const bool isElsewhere = output.monitor != output_.monitor || output.scale != output_.scale ||
                             frame.x != frame_.x || frame.y != frame_.y;
    if (std::exchange(way_, stacking_.way()) != way_) {
        // X11 decides only when a window is mapped whether it is managed.
        gtk_widget_hide(window_.get());
        gtk_widget_unrealize(window_.get());
    }
    const bool isVisible = gtk_widget_get_visible(window_.get()) != FALSE;
    gtk_widget_set_size_request(window_.get(), whole(frame.width), whole(frame.height));
    if (frame.width != frame_.width || frame.height != frame_.height) {
        gtk_window_resize(GTK_WINDOW(window_.get()), whole(frame.width), whole(frame.height));
    }
    if (isElsewhere || !isVisible) {
        move(output, frame);
    }
    if (isElsewhere && output.fractional != nullptr) {
        // Its edges may be rounded differently there.
        gtk_widget_queue_draw(window_.get());
    }
    const bool blursOtherwise = output_.blurManager != output.blurManager;
    output_ = output;
    frame_ = frame;
    if (!isVisible) {
        gtk_widget_show(window_.get());
        if (way_ != Stacking::Way::layerShell) {
            // Some window managers move only mapped windows.
            move(output, frame);
        }
        if (isUnmanaged()) {
            gdk_window_lower(gtk_widget_get_window(window_.get()));
        }
    }
    if (blursOtherwise) {
        applyBlur();
    }
}

/// Returns whether the window lowers itself, since no window manager does.
bool DesktopWindow::isUnmanaged() const {
    return way_ == Stacking::Way::unmanaged &&
           gtk_window_get_window_type(GTK_WINDOW(window_.get())) != GTK_WINDOW_POPUP;
}

bool DesktopWindow::isBlended() const {
    const bool isFront = gtk_window_get_window_type(GTK_WINDOW(window_.get())) == GTK_WINDOW_POPUP;
    return isFront ? gdk_screen_is_composited(gtk_widget_get_screen(window_.get())) != FALSE : stacking_.isBlended();
}

void DesktopWindow::blurBehind(RegionHandle region) {
    blurRegion_ = std::move(region);
    applyBlur();
}

void DesktopWindow::applyBlur() {
    blur_.reset();
    if (output_.blurManager == nullptr || !blurRegion_ || gtk_widget_get_mapped(window_.get()) == FALSE) {
        return;
    }
    GdkWindow* const window = gtk_widget_get_window(window_.get());
    const WaylandHandle<wl_region> region(
        wl_compositor_create_region(gdk_wayland_display_get_wl_compositor(gdk_window_get_display(window))));
    for (int i = 0; i < cairo_region_num_rectangles(blurRegion_.get()); ++i) {
        cairo_rectangle_int_t part;
        cairo_region_get_rectangle(blurRegion_.get(), i, &part);
        wl_region_add(region.get(), part.x, part.y, part.width, part.height);
    }
    blur_.reset(org_kde_kwin_blur_manager_create(output_.blurManager, gdk_wayland_window_get_wl_surface(window)));
    org_kde_kwin_blur_set_region(blur_.get(), region.get());
    org_kde_kwin_blur_commit(blur_.get());
    // It takes effect with the window's next frame.
    gtk_widget_queue_draw(window_.get());
}

void DesktopWindow::unmapped() {
    fractional_.reset();
    blur_.reset();
}

void DesktopWindow::realized() {
    gdk_window_set_override_redirect(gtk_widget_get_window(window_.get()), static_cast<gboolean>(isUnmanaged()));
}

void DesktopWindow::takeKeyboard(guint32 time) const {
    if (isUnmanaged()) {
        XSetInputFocus(gdk_x11_get_default_xdisplay(), gdk_x11_window_get_xid(gtk_widget_get_window(window_.get())),
                       RevertToPointerRoot, time);
    }
}

void DesktopWindow::move(const Output& output, const Rect& frame) {
    GtkWindow* window = GTK_WINDOW(window_.get());
    if (way_ != Stacking::Way::layerShell) {
        gtk_window_move(window, whole(frame.x), whole(frame.y));
        return;
    }
    if (gtk_layer_get_monitor(window) != output.monitor) {
        gtk_layer_set_monitor(window, output.monitor);
    }
    gtk_layer_set_margin(window, GTK_LAYER_SHELL_EDGE_LEFT, whole(frame.x - output.screen.bounds.x));
    gtk_layer_set_margin(window, GTK_LAYER_SHELL_EDGE_TOP, whole(frame.y - output.screen.bounds.y));
}

void DesktopWindow::hide() {
    gtk_widget_hide(window_.get());
    output_.monitor = nullptr;
}

gboolean DesktopWindow::draw(cairo_t* cairo) {
    cairo_save(cairo);
    cairo_set_operator(cairo, CAIRO_OPERATOR_CLEAR);
    cairo_paint(cairo);
    cairo_restore(cairo);
    if (paint_ && !drawFractional()) {
        paint_(cairo);
    }
    // The children draw nothing.
    return TRUE;
}

/// Returns false if GTK must draw the content instead.
bool DesktopWindow::drawFractional() {
    if (output_.fractional == nullptr) {
        fractional_.reset();
        return false;
    }
    if (!fractional_) {
        fractional_.emplace(*output_.fractional, gtk_widget_get_window(window_.get()));
    }
    const Rect& screen = output_.screen.bounds;
    const Rect onScreen{std::round(frame_.x - screen.x), std::round(frame_.y - screen.y), std::round(frame_.width),
                        std::round(frame_.height)};
    if (!fractional_->show(onScreen, output_.scale, paint_)) {
        fractional_.reset();
    }
    return fractional_.has_value();
}

} // namespace host
