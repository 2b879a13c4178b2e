#include "Host/Desktop/WaylandObjects.h"

#include <algorithm>

namespace host {
namespace {

/// The first version that has names.
constexpr std::uint32_t outputVersion = 4;

} // namespace

struct WaylandObjects::Screen {
    WaylandObjects& objects;
    WaylandHandle<wl_output> output;
    std::string name;
    /// Before the compositor rotates the picture.
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool isRotated = false;

    static Screen& from(void* self) { return *static_cast<Screen*>(self); }

    static const wl_output_listener listener;
};

const wl_output_listener WaylandObjects::Screen::listener{
    .geometry =
        [](void* self, wl_output* /*output*/, std::int32_t /*x*/, std::int32_t /*y*/, std::int32_t /*width*/,
           std::int32_t /*height*/, std::int32_t /*subpixel*/, const char* /*make*/, const char* /*model*/,
           std::int32_t transform) {
            // Odd transforms are quarter turns.
            from(self).isRotated = transform % 2 != 0;
        },
    .mode =
        [](void* self, wl_output* /*output*/, std::uint32_t flags, std::int32_t width, std::int32_t height,
           std::int32_t /*refresh*/) {
            if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
                from(self).width = width;
                from(self).height = height;
            }
        },
    .done = [](void* self, wl_output* /*output*/) { from(self).objects.changed_(); },
    .scale = [](void* /*self*/, wl_output* /*output*/, std::int32_t /*scale*/) {},
    .name = [](void* self, wl_output* /*output*/, const char* name) { from(self).name = name; },
    .description = [](void* /*self*/, wl_output* /*output*/, const char* /*description*/) {},
};

WaylandObjects::WaylandObjects(wl_display* display, std::function<void()> changed)
    : changed_(std::move(changed)), registry_(wl_display_get_registry(display)) {
    static constexpr wl_registry_listener listener{
        .global =
            [](void* self, wl_registry* /*registry*/, std::uint32_t number, const char* interface,
               std::uint32_t version) { static_cast<WaylandObjects*>(self)->onGlobal(number, interface, version); },
        .global_remove = [](void* self, wl_registry* /*registry*/,
                            std::uint32_t number) { static_cast<WaylandObjects*>(self)->onGlobalRemoved(number); },
    };
    wl_registry_add_listener(registry_.get(), &listener, this);
}

WaylandObjects::~WaylandObjects() = default;

void WaylandObjects::onGlobal(std::uint32_t number, const std::string& interface, std::uint32_t version) {
    if (interface == wl_subcompositor_interface.name) {
        subcompositor_ = bind<wl_subcompositor>(number, wl_subcompositor_interface, 1);
    } else if (interface == wl_shm_interface.name) {
        sharedMemory_ = bind<wl_shm>(number, wl_shm_interface, 1);
    } else if (interface == wp_viewporter_interface.name) {
        viewporter_ = bind<wp_viewporter>(number, wp_viewporter_interface, 1);
    } else if (interface == org_kde_kwin_blur_manager_interface.name) {
        blurManager_ = bind<org_kde_kwin_blur_manager>(number, org_kde_kwin_blur_manager_interface, 1);
        blurNumber_ = number;
        changed_();
    } else if (interface == wl_output_interface.name && version >= outputVersion) {
        auto screen = std::make_unique<Screen>(
            Screen{.objects = *this, .output = bind<wl_output>(number, wl_output_interface, outputVersion)});
        wl_output_add_listener(screen->output.get(), &Screen::listener, screen.get());
        screens_[number] = std::move(screen);
    }
}

void WaylandObjects::onGlobalRemoved(std::uint32_t number) {
    screens_.erase(number);
    if (blurManager_ && number == blurNumber_) {
        blurManager_.reset();
        changed_();
    }
}

int WaylandObjects::pixelWidth(const std::string& screen) const {
    const auto found =
        std::find_if(screens_.begin(), screens_.end(), [&](const auto& entry) { return entry.second->name == screen; });
    if (found == screens_.end()) {
        return 0;
    }
    return found->second->isRotated ? found->second->height : found->second->width;
}

} // namespace host
