// Wayland objects that GTK does not offer: for the fractional scales of screens, for surfaces at those scales, and for
// the blur behind a surface.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include <blur-client-protocol.h>
#include <viewporter-client-protocol.h>
#include <wayland-client.h>

namespace host {

struct DestroyWaylandObject {
    void operator()(wl_registry* object) const { wl_registry_destroy(object); }
    void operator()(wl_output* object) const { wl_output_destroy(object); }
    void operator()(wl_shm* object) const { wl_shm_destroy(object); }
    void operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }
    void operator()(wl_buffer* object) const { wl_buffer_destroy(object); }
    void operator()(wl_region* object) const { wl_region_destroy(object); }
    void operator()(wl_surface* object) const { wl_surface_destroy(object); }
    void operator()(wl_subcompositor* object) const { wl_subcompositor_destroy(object); }
    void operator()(wl_subsurface* object) const { wl_subsurface_destroy(object); }
    void operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }
    void operator()(wp_viewport* object) const { wp_viewport_destroy(object); }
    void operator()(org_kde_kwin_blur_manager* object) const { org_kde_kwin_blur_manager_destroy(object); }
    void operator()(org_kde_kwin_blur* object) const { org_kde_kwin_blur_release(object); }
};
template <class Object>
using WaylandHandle = std::unique_ptr<Object, DestroyWaylandObject>;

class WaylandObjects {
  public:
    /// Calls `changed` from the main loop when all objects are known, when a screen's resolution may have changed, and
    /// when the compositor starts or stops to support blur.
    WaylandObjects(wl_display* display, std::function<void()> changed);
    WaylandObjects(const WaylandObjects&) = delete;
    WaylandObjects& operator=(const WaylandObjects&) = delete;
    ~WaylandObjects();

    /// Returns the width of the screen with that name in device pixels; 0 if unknown.
    int pixelWidth(const std::string& screen) const;

    /// Null if the compositor does not have them, and before the first screens are known.
    wl_subcompositor* subcompositor() const { return subcompositor_.get(); }
    wl_shm* sharedMemory() const { return sharedMemory_.get(); }
    wp_viewporter* viewporter() const { return viewporter_.get(); }
    /// Null while the compositor does not support blur.
    org_kde_kwin_blur_manager* blurManager() const { return blurManager_.get(); }

  private:
    struct Screen;

    void onGlobal(std::uint32_t number, const std::string& interface, std::uint32_t version);
    void onGlobalRemoved(std::uint32_t number);
    template <class Object>
    WaylandHandle<Object> bind(std::uint32_t number, const wl_interface& interface, std::uint32_t version) {
        return WaylandHandle<Object>(
            static_cast<Object*>(wl_registry_bind(registry_.get(), number, &interface, version)));
    }

    std::function<void()> changed_;
    WaylandHandle<wl_registry> registry_;
    WaylandHandle<wl_subcompositor> subcompositor_;
    WaylandHandle<wl_shm> sharedMemory_;
    WaylandHandle<wp_viewporter> viewporter_;
    WaylandHandle<org_kde_kwin_blur_manager> blurManager_;
    /// The compositor's number of `blurManager_`.
    std::uint32_t blurNumber_ = 0;
    /// By the compositor's numbers.
    std::map<std::uint32_t, std::unique_ptr<Screen>> screens_;
};

} // namespace host
