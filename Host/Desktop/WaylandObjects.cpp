#include "Host/Desktop/WaylandObjects.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

/// Compositors take scales in steps of this part of a whole.
constexpr double scaleSteps = 120;

// The versions that have all that is used here.
constexpr std::uint32_t screenVersion = 2;
constexpr std::uint32_t descriptionVersion = 2;

} // namespace

struct WaylandObjects::Screen {
    WaylandObjects& objects;
    WaylandHandle<wl_output> output;
    WaylandHandle<zxdg_output_v1> description;
    std::string name;
    /// Of its picture as it is sent to the screen, before the compositor turns it.
    std::int32_t pixelWidth = 0;
    std::int32_t pixelHeight = 0;
    bool isTurned = false;
    /// In units.
    std::int32_t width = 0;

    static Screen& from(void* self) { return *static_cast<Screen*>(self); }

    static const wl_output_listener outputListener;
    static const zxdg_output_v1_listener descriptionListener;
};

const wl_output_listener WaylandObjects::Screen::outputListener{
    .geometry =
        [](void* self, wl_output* /*output*/, std::int32_t /*x*/, std::int32_t /*y*/, std::int32_t /*width*/,
           std::int32_t /*height*/, std::int32_t /*subpixel*/, const char* /*make*/, const char* /*model*/,
           std::int32_t transform) {
            // Every odd one is by a quarter turn.
            from(self).isTurned = transform % 2 != 0;
        },
    .mode =
        [](void* self, wl_output* /*output*/, std::uint32_t flags, std::int32_t width, std::int32_t height,
           std::int32_t /*refresh*/) {
            if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
                from(self).pixelWidth = width;
                from(self).pixelHeight = height;
            }
        },
    .done = [](void* self, wl_output* /*output*/) { from(self).objects.changed_(); },
    .scale = [](void* /*self*/, wl_output* /*output*/, std::int32_t /*scale*/) {},
    .name = nullptr,
    .description = nullptr,
};
const zxdg_output_v1_listener WaylandObjects::Screen::descriptionListener{
    .logical_position = [](void* /*self*/, zxdg_output_v1* /*output*/, std::int32_t /*x*/, std::int32_t /*y*/) {},
    .logical_size = [](void* self, zxdg_output_v1* /*output*/, std::int32_t width,
                       std::int32_t /*height*/) { from(self).width = width; },
    .done = [](void* self, zxdg_output_v1* /*output*/) { from(self).objects.changed_(); },
    .name = [](void* self, zxdg_output_v1* /*output*/, const char* name) { from(self).name = name; },
    .description = [](void* /*self*/, zxdg_output_v1* /*output*/, const char* /*description*/) {},
};

WaylandObjects::WaylandObjects(wl_display* display, std::function<void()> changed)
    : changed_(std::move(changed)), registry_(wl_display_get_registry(display)) {
    static constexpr wl_registry_listener listener{
        .global =
            [](void* self, wl_registry* /*registry*/, std::uint32_t number, const char* interface,
               std::uint32_t version) { static_cast<WaylandObjects*>(self)->appeared(number, interface, version); },
        .global_remove = [](void* self, wl_registry* /*registry*/,
                            std::uint32_t number) { static_cast<WaylandObjects*>(self)->screens_.erase(number); },
    };
    wl_registry_add_listener(registry_.get(), &listener, this);
}

WaylandObjects::~WaylandObjects() = default;

void WaylandObjects::appeared(std::uint32_t number, const std::string& interface, std::uint32_t version) {
    if (interface == wl_subcompositor_interface.name) {
        subcompositor_ = bind<wl_subcompositor>(number, wl_subcompositor_interface, 1);
    } else if (interface == wl_shm_interface.name) {
        sharedMemory_ = bind<wl_shm>(number, wl_shm_interface, 1);
    } else if (interface == wp_viewporter_interface.name) {
        viewporter_ = bind<wp_viewporter>(number, wp_viewporter_interface, 1);
    } else if (interface == zxdg_output_manager_v1_interface.name && version >= descriptionVersion) {
        describer_ = bind<zxdg_output_manager_v1>(number, zxdg_output_manager_v1_interface, descriptionVersion);
        describeScreens();
    } else if (interface == wl_output_interface.name && version >= screenVersion) {
        auto screen = std::make_unique<Screen>(
            Screen{.objects = *this, .output = bind<wl_output>(number, wl_output_interface, screenVersion)});
        wl_output_add_listener(screen->output.get(), &Screen::outputListener, screen.get());
        screens_[number] = std::move(screen);
        describeScreens();
    }
}

/// Screens and their descriptions come in any order.
void WaylandObjects::describeScreens() {
    if (!describer_) {
        return;
    }
    for (const auto& [number, screen] : screens_) {
        if (!screen->description) {
            screen->description.reset(zxdg_output_manager_v1_get_xdg_output(describer_.get(), screen->output.get()));
            zxdg_output_v1_add_listener(screen->description.get(), &Screen::descriptionListener, screen.get());
        }
    }
}

std::optional<double> WaylandObjects::scale(const std::string& screen) const {
    const auto found =
        std::find_if(screens_.begin(), screens_.end(), [&](const auto& entry) { return entry.second->name == screen; });
    if (found == screens_.end()) {
        return std::nullopt;
    }
    const Screen& known = *found->second;
    const int pixels = known.isTurned ? known.pixelHeight : known.pixelWidth;
    if (pixels <= 0 || known.width <= 0) {
        return std::nullopt;
    }
    // The size in units is rounded.
    return std::round(scaleSteps * pixels / known.width) / scaleSteps;
}

} // namespace host
