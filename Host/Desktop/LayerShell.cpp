#include "Host/Desktop/LayerShell.h"

#include <wayland-client.h>

#include <cerrno>
#include <cstdarg>
#include <memory>
#include <string_view>

namespace host {
namespace {

struct Disconnect {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
    void operator()(wl_registry* registry) const { wl_registry_destroy(registry); }
};

/// Stores the version of an announced layer shell in `data`.
void announced(void* data, wl_registry* /*registry*/, std::uint32_t /*name*/, const char* interface,
               std::uint32_t version) {
    if (std::string_view(interface) == "zwlr_layer_shell_v1") {
        *static_cast<std::uint32_t*>(data) = version;
    }
}
void withdrawn(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}
constexpr wl_registry_listener registryListener{announced, withdrawn};

void keepSilent(const char* /*format*/, va_list /*arguments*/) {}

} // namespace

platform::Expected<std::uint32_t, int> layerShellVersion() {
    wl_log_set_handler_client(keepSilent);
    const std::unique_ptr<wl_display, Disconnect> connection(wl_display_connect(nullptr));
    if (!connection) {
        return platform::Unexpected{errno};
    }
    const std::unique_ptr<wl_registry, Disconnect> registry(wl_display_get_registry(connection.get()));
    std::uint32_t version = 0;
    wl_registry_add_listener(registry.get(), &registryListener, &version);
    if (wl_display_roundtrip(connection.get()) < 0) {
        return platform::Unexpected{errno};
    }
    return version;
}

} // namespace host
