#include "Host/Desktop/Outputs.h"

#include "Host/Desktop/FineSurface.h"

#include <fmt/format.h>
#include <gdk/gdkwayland.h>
#include <gdk/gdkx.h>

#include <algorithm>
#include <cmath>

namespace host {
namespace {

Rect rectOf(const GdkRectangle& rectangle) {
    return {static_cast<double>(rectangle.x), static_cast<double>(rectangle.y), static_cast<double>(rectangle.width),
            static_cast<double>(rectangle.height)};
}

std::string nameOf(int number) {
    // The one way to a connector's name in this toolkit, on Wayland and on X.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    std::string name = takeText(gdk_screen_get_monitor_plug_name(gdk_screen_get_default(), number));
    G_GNUC_END_IGNORE_DEPRECATIONS
    return name.empty() ? fmt::format("screen-{}", number + 1) : name;
}

} // namespace

std::vector<Output> Outputs::present() const {
    if (stacking_.way() == Stacking::Way::none) {
        return {};
    }
    GdkDisplay* display = gdk_display_get_default();
    std::vector<Output> outputs;
    const GdkMonitor* primary = gdk_display_get_primary_monitor(display);
    for (int number = 0; number < gdk_display_get_n_monitors(display); ++number) {
        GdkMonitor* monitor = gdk_display_get_monitor(display, number);
        GdkRectangle bounds;
        GdkRectangle area;
        gdk_monitor_get_geometry(monitor, &bounds);
        gdk_monitor_get_workarea(monitor, &area);
        // A monitor that has just come may not have said its size yet.
        if (bounds.width > 0 && bounds.height > 0) {
            Output output{.screen = {.name = nameOf(number), .bounds = rectOf(bounds), .area = rectOf(area)},
                          .monitor = monitor,
                          .scale = std::max(1.0, static_cast<double>(gdk_monitor_get_scale_factor(monitor)))};
            const auto exact = wayland_ ? wayland_->scale(output.screen.name) : std::nullopt;
            if (exact && *exact != std::floor(*exact) && FineSurface::isPossible(*wayland_)) {
                output.scale = *exact;
                output.fine = &*wayland_;
            }
            outputs.insert(monitor == primary ? outputs.begin() : outputs.end(), output);
        }
    }
    return outputs;
}

Outputs::Outputs(std::function<void()> changed)
    : changed_(std::move(changed)), stacking_([this] { stackingChanged(); }) {
    GdkDisplay* display = gdk_display_get_default();
    if (stacking_.way() == Stacking::Way::layerShell) {
        wayland_.emplace(gdk_wayland_display_get_wl_display(display), [this] { notice(); });
    }
    outputs_ = present();
    connect<&Outputs::noticeMonitor>(display, "monitor-added", this);
    connect<&Outputs::noticeMonitor>(display, "monitor-removed", this);
    connect<&Outputs::notice>(gdk_screen_get_default(), "monitors-changed", this);
    connect<&Outputs::notice>(gdk_screen_get_default(), "size-changed", this);
    if (GDK_IS_X11_DISPLAY(display) != FALSE) {
        GdkWindow* root = gdk_get_default_root_window();
        gdk_window_set_events(root, static_cast<GdkEventMask>(gdk_window_get_events(root) | GDK_PROPERTY_CHANGE_MASK));
        gdk_window_add_filter(root, &Outputs::noticeWorkarea, this);
    }
    refresh();
}

Outputs::~Outputs() {
    for (const auto& monitor : followed_) {
        g_signal_handlers_disconnect_by_data(monitor.get(), this);
    }
    g_signal_handlers_disconnect_by_data(gdk_display_get_default(), this);
    g_signal_handlers_disconnect_by_data(gdk_screen_get_default(), this);
    gdk_window_remove_filter(gdk_get_default_root_window(), &Outputs::noticeWorkarea, this);
}

std::vector<Screen> Outputs::screens() const {
    std::vector<Screen> screens;
    for (const Output& output : outputs_) {
        screens.push_back(output.screen);
    }
    return screens;
}

void Outputs::noticeMonitor(GdkMonitor* /*monitor*/) {
    notice();
}
void Outputs::noticeProperty(GParamSpec* /*property*/) {
    notice();
}

/// What panels leave is the window manager's to say, which it does when it has seen them or the screen itself change:
/// later than the toolkit, which does not tell of it.
GdkFilterReturn Outputs::noticeWorkarea(GdkXEvent* event, GdkEvent* /*unused*/, gpointer self) {
    const auto* told = static_cast<const XEvent*>(event);
    if (told->type == PropertyNotify && told->xproperty.atom == gdk_x11_get_xatom_by_name("_NET_WORKAREA")) {
        static_cast<Outputs*>(self)->notice();
    }
    return GDK_FILTER_CONTINUE;
}

/// A change of screens comes as many small ones; it is known before anything is drawn for it.
void Outputs::notice() {
    refreshing_.whenIdle<&Outputs::refresh>(this, G_PRIORITY_HIGH_IDLE - 1);
}

void Outputs::stackingChanged() {
    outputs_ = present();
    changed_();
}

void Outputs::refresh() {
    for (const auto& monitor : followed_) {
        g_signal_handlers_disconnect_by_data(monitor.get(), this);
    }
    followed_.clear();
    GdkDisplay* display = gdk_display_get_default();
    for (int number = 0; number < gdk_display_get_n_monitors(display); ++number) {
        GdkMonitor* monitor = gdk_display_get_monitor(display, number);
        followed_.emplace_back(GDK_MONITOR(g_object_ref(monitor)));
        for (const char* signal : {"notify::geometry", "notify::workarea", "notify::scale-factor"}) {
            connect<&Outputs::noticeProperty>(monitor, signal, this);
        }
    }
    auto outputs = present();
    if (outputs != outputs_) {
        outputs_ = std::move(outputs);
        changed_();
    }
}

} // namespace host
