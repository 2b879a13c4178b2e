#include "Host/Desktop/FractionalScaleSurface.h"

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/PixelGrid.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <gdk/gdkwayland.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sys/mman.h>
#include <unistd.h>

namespace host {
namespace {

struct Unmap {
    std::size_t length;
    void operator()(void* memory) const { munmap(memory, length); }
};

wl_compositor* compositorOf(GdkWindow* window) {
    return gdk_wayland_display_get_wl_compositor(gdk_window_get_display(window));
}

} // namespace

bool FractionalScaleSurface::isPossible(const WaylandObjects& objects) {
    return objects.subcompositor() != nullptr && objects.sharedMemory() != nullptr && objects.viewporter() != nullptr;
}

FractionalScaleSurface::FractionalScaleSurface(const WaylandObjects& objects, GdkWindow* window)
    : objects_(objects), surface_(wl_compositor_create_surface(compositorOf(window))),
      place_(wl_subcompositor_get_subsurface(objects.subcompositor(), surface_.get(),
                                             gdk_wayland_window_get_wl_surface(window))),
      viewport_(wp_viewporter_get_viewport(objects.viewporter(), surface_.get())) {
    const WaylandHandle<wl_region> nothing(wl_compositor_create_region(compositorOf(window)));
    wl_surface_set_input_region(surface_.get(), nothing.get());
}

bool FractionalScaleSurface::show(const Rect& frame, double scale, const std::function<void(cairo_t*)>& paint) {
    // The compositor rounds a window's edges in the same way.
    const Rect pixels = PixelGrid(scale).rect(frame);
    const int width = static_cast<int>(pixels.width);
    const int height = static_cast<int>(pixels.height);
    const int stride = width * 4;
    const std::size_t bytes = static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
    const platform::FileDescriptor file(memfd_create("widgethost", MFD_CLOEXEC));
    if (!file.isOpen() || ftruncate(file.get(), static_cast<off_t>(bytes)) != 0) {
        return false;
    }
    void* mapped = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
    if (mapped == MAP_FAILED) {
        return false;
    }
    {
        const std::unique_ptr<void, Unmap> memory(mapped, Unmap{bytes});
        const SurfaceHandle picture(cairo_image_surface_create_for_data(static_cast<unsigned char*>(memory.get()),
                                                                        CAIRO_FORMAT_ARGB32, width, height, stride));
        const CairoHandle cairo(cairo_create(picture.get()));
        cairo_translate(cairo.get(), frame.x * scale - pixels.x, frame.y * scale - pixels.y);
        cairo_scale(cairo.get(), scale, scale);
        paint(cairo.get());
    }
    const WaylandHandle<wl_shm_pool> pool(
        wl_shm_create_pool(objects_.sharedMemory(), file.get(), static_cast<std::int32_t>(bytes)));
    wl_buffer* buffer = wl_shm_pool_create_buffer(pool.get(), 0, width, height, stride, WL_SHM_FORMAT_ARGB8888);
    static constexpr wl_buffer_listener listener{.release = [](void* self, wl_buffer* released) {
        static_cast<FractionalScaleSurface*>(self)->release(released);
    }};
    wl_buffer_add_listener(buffer, &listener, this);
    buffers_.emplace_back(buffer);
    wl_surface_attach(surface_.get(), buffer, 0, 0);
    wl_surface_damage(surface_.get(), 0, 0, std::numeric_limits<std::int32_t>::max(),
                      std::numeric_limits<std::int32_t>::max());
    wp_viewport_set_destination(viewport_.get(), static_cast<int>(std::lround(frame.width)),
                                static_cast<int>(std::lround(frame.height)));
    wl_surface_commit(surface_.get());
    return true;
}

void FractionalScaleSurface::release(wl_buffer* buffer) {
    std::erase_if(buffers_, [buffer](const auto& each) { return each.get() == buffer; });
}

} // namespace host
