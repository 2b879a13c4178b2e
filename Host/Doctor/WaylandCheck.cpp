#include "Host/Doctor/WaylandCheck.h"

#include <fmt/format.h>
#include <wayland-client.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <string_view>

namespace host {
namespace {

constexpr std::string_view layerShell = "zwlr_layer_shell_v1";

struct Disconnect {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
    void operator()(wl_registry* registry) const { wl_registry_destroy(registry); }
};

/// The version of the layer shell that was announced, into `data`.
void announced(void* data, wl_registry* /*registry*/, std::uint32_t /*name*/, const char* interface,
               std::uint32_t version) {
    if (interface == layerShell) {
        *static_cast<std::uint32_t*>(data) = version;
    }
}
void withdrawn(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}
constexpr wl_registry_listener registryListener{announced, withdrawn};

void keepSilent(const char* /*format*/, va_list /*arguments*/) {}

Finding unreachable(const std::string& display, int error) {
    return Finding::problem("compositor",
                            fmt::format("Wayland, {}: cannot be reached ({})", display,
                                        std::strerror(error)), // NOLINT(concurrency-mt-unsafe)
                            "run it inside the graphical session, with its WAYLAND_DISPLAY and XDG_RUNTIME_DIR");
}

} // namespace

Findings checkWayland(const std::string& display) {
    wl_log_set_handler_client(keepSilent);
    const std::unique_ptr<wl_display, Disconnect> connection(wl_display_connect(nullptr));
    if (!connection) {
        return {unreachable(display, errno)};
    }
    const std::unique_ptr<wl_registry, Disconnect> registry(wl_display_get_registry(connection.get()));
    std::uint32_t version = 0;
    wl_registry_add_listener(registry.get(), &registryListener, &version);
    if (wl_display_roundtrip(connection.get()) < 0) {
        return {unreachable(display, errno)};
    }
    const Finding shell =
        version > 0
            ? Finding::ok("layer shell", fmt::format("version {}: widgets lie under all windows", version))
            : Finding::note(
                  "layer shell", "there is none: this compositor cannot keep widgets under other windows",
                  fmt::format("start the host with GDK_BACKEND=x11, or use a compositor that has {}", layerShell));
    return {Finding::ok("compositor", "Wayland, " + display), shell};
}

} // namespace host
