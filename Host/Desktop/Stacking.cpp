#include "Host/Desktop/Stacking.h"

#include "Host/Desktop/LayerShell.h"
#include "Host/Layout/Geometry.h"

#include <gdk/gdkx.h>
#include <gtk-layer-shell.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>

namespace host {
namespace {

/// A raise so soon after the last one means that another program, not the user, raised its window.
constexpr gint64 contestMicroseconds = 100'000;
constexpr int maxContested = 10;

Atom atom(const char* name) {
    return gdk_x11_get_xatom_by_name(name);
}

/// Ignores errors: windows of other programs may be gone already.
class ErrorTrap {
  public:
    ErrorTrap() { gdk_x11_display_error_trap_push(gdk_display_get_default()); }
    ~ErrorTrap() { gdk_x11_display_error_trap_pop_ignored(gdk_display_get_default()); }
    ErrorTrap(const ErrorTrap&) = delete;
    ErrorTrap& operator=(const ErrorTrap&) = delete;
};

/// Returns a property's bytes as Xlib does, with numbers as longs. Empty if the window lacks the property.
std::string property(Window window, const char* name) {
    const ErrorTrap trap;
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    const int status =
        XGetWindowProperty(gdk_x11_get_default_xdisplay(), window, atom(name), 0, std::numeric_limits<int>::max() / 4,
                           False, AnyPropertyType, &type, &format, &count, &rest, &data);
    if (status != Success || data == nullptr) {
        return {};
    }
    std::string bytes(reinterpret_cast<const char*>(data), count * (format == 32 ? sizeof(long) : 1));
    XFree(data);
    return bytes;
}

std::vector<unsigned long> numbers(Window window, const char* name) {
    const std::string bytes = property(window, name);
    std::vector<unsigned long> values(bytes.size() / sizeof(unsigned long));
    std::memcpy(values.data(), bytes.data(), values.size() * sizeof(unsigned long));
    return values;
}

bool names(Window window, const char* property, const char* value) {
    const auto values = numbers(window, property);
    return std::find(values.begin(), values.end(), atom(value)) != values.end();
}

Window root() {
    return gdk_x11_get_default_root_xwindow();
}

/// Returns the window manager's window. The root's property may be that of a manager that has ended.
std::optional<Window> managersWindow() {
    constexpr const char* sign = "_NET_SUPPORTING_WM_CHECK";
    const auto window = numbers(root(), sign);
    return window.size() == 1 && numbers(window[0], sign) == window ? std::optional<Window>(window[0]) : std::nullopt;
}

/// Returns the window's frame in the server's pixels; empty if the window is gone.
Rect frameOf(Window window) {
    const ErrorTrap trap;
    Display* display = gdk_x11_get_default_xdisplay();
    XWindowAttributes attributes{};
    int x = 0;
    int y = 0;
    Window child = None;
    if (XGetWindowAttributes(display, window, &attributes) == 0 ||
        XTranslateCoordinates(display, window, root(), 0, 0, &x, &y, &child) == 0) {
        return {};
    }
    return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(attributes.width),
            static_cast<double>(attributes.height)};
}

bool covers(const Rect& above, const Rect& below) {
    return above.x <= below.x && above.y <= below.y && above.right() >= below.right() &&
           above.bottom() >= below.bottom();
}

bool isX11() {
    return GDK_IS_X11_DISPLAY(gdk_display_get_default()) != FALSE;
}

/// Returns the way until an X11 window manager is known.
Stacking::Way firstWay() {
    return isX11()                             ? Stacking::Way::desktopWindows
           : gtk_layer_is_supported() != FALSE ? Stacking::Way::layerShell
                                               : Stacking::Way::none;
}

} // namespace

Stacking::Stacking(std::function<void()> changed) : changed_(std::move(changed)), way_(firstWay()) {
    if (isX11()) {
        GdkWindow* window = gdk_get_default_root_window();
        gdk_window_set_events(window,
                              static_cast<GdkEventMask>(gdk_window_get_events(window) | GDK_PROPERTY_CHANGE_MASK));
        gdk_window_add_filter(window, &Stacking::onRootProperty, this);
        connect<&Stacking::onManagerChanged>(gdk_screen_get_default(), "composited-changed", this);
    }
    const auto callback = std::exchange(changed_, nullptr);
    update();
    changed_ = callback;
}

Stacking::~Stacking() {
    if (isX11()) {
        gdk_window_remove_filter(gdk_get_default_root_window(), &Stacking::onRootProperty, this);
        g_signal_handlers_disconnect_by_data(gdk_screen_get_default(), this);
    }
}

GdkFilterReturn Stacking::onRootProperty(GdkXEvent* event, GdkEvent* /*unused*/, gpointer self) {
    const auto* notice = static_cast<const XEvent*>(event);
    if (notice->type != PropertyNotify) {
        return GDK_FILTER_CONTINUE;
    }
    auto& stacking = *static_cast<Stacking*>(self);
    const Atom changed = notice->xproperty.atom;
    if (changed == atom("_NET_CLIENT_LIST_STACKING")) {
        stacking.raising_.idle<&Stacking::raise>(&stacking, G_PRIORITY_HIGH_IDLE - 1);
    } else if (changed == atom("_NET_SUPPORTED") || changed == atom("_NET_SUPPORTING_WM_CHECK")) {
        stacking.onManagerChanged();
    } else if (changed == atom("_NET_WORKAREA")) {
        stacking.changed_();
    }
    return GDK_FILTER_CONTINUE;
}

void Stacking::onManagerChanged() {
    updating_.idle<&Stacking::update>(this, G_PRIORITY_HIGH_IDLE - 1);
}

/// Reads what the window manager supports. Without one, the last values stay.
void Stacking::update() {
    const Way before = way_;
    bool blends = gdk_screen_is_composited(gdk_screen_get_default()) != FALSE;
    if (const auto manager = isX11() ? managersWindow() : std::nullopt) {
        // XWayland shows unmanaged windows above all others.
        way_ = names(root(), "_NET_SUPPORTED", "_NET_WM_WINDOW_TYPE_DESKTOP") ? Way::desktopWindows
               : layerShellVersion()                                          ? Way::none
                                                                              : Way::unmanaged;
        // KWin draws windows of the desktop type opaque.
        blends = blends && property(*manager, "_NET_WM_NAME") != "KWin";
    }
    if (way_ == Way::none && (before != Way::none || !changed_)) {
        g_printerr(
            "widgethost: neither this compositor nor an X server keeps windows under all others, so no widgets are "
            "shown; the gallery and all commands work\n");
    }
    const bool isOther = std::exchange(isBlended_, blends) != blends || way_ != before;
    if (isOther && changed_) {
        changed_();
    }
}

/// Returns whether a window that draws the desktop covers one of ours.
bool Stacking::isBuried() const {
    std::vector<Window> own;
    for (GtkWidget* window : windows_) {
        if (gtk_widget_get_mapped(window) != FALSE) {
            own.push_back(gdk_x11_window_get_xid(gtk_widget_get_window(window)));
        }
    }
    std::vector<Rect> below;
    for (const Window window : numbers(root(), "_NET_CLIENT_LIST_STACKING")) {
        if (std::find(own.begin(), own.end(), window) != own.end()) {
            below.push_back(frameOf(window));
        } else if (!below.empty()) {
            if (!names(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP")) {
                // The first window of an application; all others are above it.
                return false;
            }
            const Rect frame = frameOf(window);
            if (std::any_of(below.begin(), below.end(), [&](const Rect& each) { return covers(frame, each); })) {
                return true;
            }
        }
    }
    return false;
}

void Stacking::raise() {
    if (way_ != Way::desktopWindows || !isBuried()) {
        return;
    }
    const gint64 now = g_get_monotonic_time();
    contested_ = now - raised_ < contestMicroseconds ? contested_ + 1 : 0;
    if (contested_ >= maxContested) {
        return;
    }
    for (GtkWidget* widget : windows_) {
        if (gtk_widget_get_mapped(widget) != FALSE) {
            GdkWindow* window = gtk_widget_get_window(widget);
            // Some window managers raise only the window that was used last.
            gdk_x11_window_set_user_time(window, gdk_x11_get_server_time(window));
            gdk_window_raise(window);
        }
    }
    raised_ = g_get_monotonic_time();
}

} // namespace host
