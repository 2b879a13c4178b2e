#include "Host/Desktop/Outputs.h"

#include "Host/Desktop/FractionalScaleSurface.h"

#include <fmt/format.h>
#include <gdk/gdkwayland.h>

#include <algorithm>
#include <cmath>

namespace host {
namespace {

/// Compositors take scales in steps of this fraction.
constexpr double scaleSteps = 120;

Rect rectOf(const GdkRectangle& rectangle) {
    return {static_cast<double>(rectangle.x), static_cast<double>(rectangle.y), static_cast<double>(rectangle.width),
            static_cast<double>(rectangle.height)};
}

std::string nameOf(int number) {
    // GTK 3 offers the connector's name only here.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    std::string name = stringFromOwned(gdk_screen_get_monitor_plug_name(gdk_screen_get_default(), number));
    G_GNUC_END_IGNORE_DEPRECATIONS
    return name.empty() ? fmt::format("screen-{}", number + 1) : name;
}

} // namespace

Outputs::Outputs(std::function<void()> changed)
    : changed_(std::move(changed)), stacking_([this] { refreshSoon(); }),
      stackingState_(stacking_.way(), stacking_.isBlended()) {
    GdkDisplay* display = gdk_display_get_default();
    if (stacking_.way() == Stacking::Way::layerShell) {
        wayland_.emplace(gdk_wayland_display_get_wl_display(display), [this] { refreshSoon(); });
    }
    connect<&Outputs::refreshSoon>(display, "monitor-added", this);
    connect<&Outputs::refreshSoon>(display, "monitor-removed", this);
    connect<&Outputs::refreshSoon>(gdk_screen_get_default(), "monitors-changed", this);
    connect<&Outputs::refreshSoon>(gdk_screen_get_default(), "size-changed", this);
    readMonitors();
    outputs_ = present();
}

Outputs::~Outputs() {
    g_signal_handlers_disconnect_by_data(gdk_display_get_default(), this);
    g_signal_handlers_disconnect_by_data(gdk_screen_get_default(), this);
}

std::vector<Screen> Outputs::screens() const {
    std::vector<Screen> screens;
    for (const Output& output : outputs_) {
        screens.push_back(output.screen);
    }
    return screens;
}

/// Refreshes once for many small changes of screens, before anything is drawn.
void Outputs::refreshSoon() {
    refreshing_.idle<&Outputs::refresh>(this, G_PRIORITY_HIGH_IDLE - 1);
}

void Outputs::refresh() {
    readMonitors();
    auto outputs = present();
    const std::pair stackingState(stacking_.way(), stacking_.isBlended());
    if (std::exchange(stackingState_, stackingState) != stackingState || outputs != outputs_) {
        outputs_ = std::move(outputs);
        changed_();
    }
}

void Outputs::readMonitors() {
    GdkDisplay* display = gdk_display_get_default();
    std::vector<Monitor> monitors;
    for (int number = 0; number < gdk_display_get_n_monitors(display); ++number) {
        GdkMonitor* monitor = gdk_display_get_monitor(display, number);
        const auto known = std::find_if(monitors_.begin(), monitors_.end(),
                                        [&](const Monitor& each) { return each.monitor.get() == monitor; });
        if (known != monitors_.end()) {
            monitors.push_back(std::move(*known));
            continue;
        }
        monitors.push_back({.monitor = ObjectHandle<GdkMonitor>(GDK_MONITOR(g_object_ref(monitor))), .area = nullptr});
    }
    monitors_ = std::move(monitors);
    if (wayland_) {
        // After the tiles.
        watchingWorkAreas_.idle<&Outputs::watchWorkAreas>(this, G_PRIORITY_LOW);
    }
}

void Outputs::watchWorkAreas() {
    for (Monitor& each : monitors_) {
        if (!each.area) {
            each.area = std::make_unique<WorkArea>(each.monitor.get(), [this] { refreshSoon(); });
        }
    }
}

Output Outputs::describe(int number, const Monitor& monitor) const {
    GdkRectangle bounds;
    GdkRectangle area;
    gdk_monitor_get_geometry(monitor.monitor.get(), &bounds);
    gdk_monitor_get_workarea(monitor.monitor.get(), &area);
    if (monitor.area && monitor.area->size().width > 0 && monitor.area->size().height > 0) {
        area.width = static_cast<int>(monitor.area->size().width);
        area.height = static_cast<int>(monitor.area->size().height);
    }
    Output output{.screen = {.name = nameOf(number), .bounds = rectOf(bounds), .area = rectOf(area)},
                  .monitor = monitor.monitor.get(),
                  .scale = std::max(1.0, static_cast<double>(gdk_monitor_get_scale_factor(monitor.monitor.get()))),
                  .blurManager = wayland_ ? wayland_->blurManager() : nullptr};
    const int pixels = wayland_ && bounds.width > 0 ? wayland_->pixelWidth(output.screen.name) : 0;
    // GDK's size in units is rounded.
    const double scale = pixels > 0 ? std::round(scaleSteps * pixels / bounds.width) / scaleSteps : 1;
    if (scale != std::floor(scale) && FractionalScaleSurface::isPossible(*wayland_)) {
        output.scale = scale;
        output.fractional = &*wayland_;
    }
    return output;
}

std::vector<Output> Outputs::present() const {
    std::vector<Output> outputs;
    if (stacking_.way() == Stacking::Way::none) {
        return outputs;
    }
    const GdkMonitor* primary = gdk_display_get_primary_monitor(gdk_display_get_default());
    for (std::size_t number = 0; number < monitors_.size(); ++number) {
        const Output output = describe(static_cast<int>(number), monitors_[number]);
        // A new monitor may not have sent its size yet.
        if (output.screen.bounds.width > 0 && output.screen.bounds.height > 0) {
            outputs.insert(output.monitor == primary ? outputs.begin() : outputs.end(), output);
        }
    }
    return outputs;
}

} // namespace host
