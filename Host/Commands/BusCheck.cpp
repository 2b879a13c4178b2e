#include "Host/Commands/MachineChecks.h"

#include "Host/Session/RunningHost.h"
#include "Platform/Foundation/Releaser.h"

#include <fmt/format.h>
#include <gio/gio.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>

namespace host {
namespace {

/// For each call on the bus.
constexpr int timeoutMilliseconds = 2000;

using Bus = std::unique_ptr<GDBusConnection, platform::Releaser<g_object_unref>>;
using Variant = std::unique_ptr<GVariant, platform::Releaser<g_variant_unref>>;

/// Returns the address of the session bus. GLib's own search would start a bus on a desktop without one.
std::optional<std::string> busAddress() {
    const char* named = std::getenv("DBUS_SESSION_BUS_ADDRESS"); // NOLINT(concurrency-mt-unsafe)
    if (named != nullptr && *named != '\0') {
        return named;
    }
    const char* runtime = std::getenv("XDG_RUNTIME_DIR"); // NOLINT(concurrency-mt-unsafe)
    std::error_code failure;
    if (runtime == nullptr || !std::filesystem::is_socket(std::filesystem::path(runtime) / "bus", failure)) {
        return std::nullopt;
    }
    const std::unique_ptr<char, platform::Releaser<g_free>> path(g_dbus_address_escape_value(runtime));
    return fmt::format("unix:path={}/bus", path.get());
}

/// Returns the answer, a tuple of `type`; null on failure or timeout.
Variant call(const Bus& bus, const char* name, const char* path, const char* interface, const char* method,
             GVariant* parameters, const char* type) {
    return Variant(g_dbus_connection_call_sync(bus.get(), name, path, interface, method, parameters,
                                               G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NONE, timeoutMilliseconds,
                                               nullptr, nullptr));
}

bool isOwned(const Bus& bus, const char* name) {
    constexpr const char* busItself = "org.freedesktop.DBus";
    const Variant answer =
        call(bus, busItself, "/org/freedesktop/DBus", busItself, "NameHasOwner", g_variant_new("(s)", name), "(b)");
    gboolean owned = FALSE;
    if (answer) {
        g_variant_get(answer.get(), "(b)", &owned);
    }
    return owned != FALSE;
}

Finding checkRunningHost(const Bus& bus) {
    return isOwned(bus, busName) ? Finding::ok("running host", "running")
                                 : Finding::note("running host", "not running: placed widgets are not shown",
                                                 "start it with widgethost desktop");
}

Finding checkPortal(const Bus& bus) {
    const Variant answer = call(bus, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                "org.freedesktop.DBus.Properties", "Get",
                                g_variant_new("(ss)", "org.freedesktop.portal.Settings", "version"), "(v)");
    GVariant* value = nullptr;
    if (answer) {
        g_variant_get(answer.get(), "(v)", &value);
    }
    const Variant version(value);
    if (!version || g_variant_is_of_type(version.get(), G_VARIANT_TYPE_UINT32) == FALSE) {
        return Finding::note("portal", "no portal has settings: widgets do not follow the desktop's light and dark",
                             "install xdg-desktop-portal and the portal of your desktop, or restart it");
    }
    return Finding::ok("portal", fmt::format("has settings, version {}", g_variant_get_uint32(version.get())));
}

Finding noBus(const std::string& what) {
    return Finding::note("session bus", what + ": commands do not reach a running host",
                         "log in to a desktop session, or run under dbus-run-session");
}

} // namespace

Findings checkBus() {
    const auto address = busAddress();
    if (!address) {
        return {noBus("not found")};
    }
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GError* refusal = nullptr;
    const Bus bus(g_dbus_connection_new_for_address_sync(address->c_str(), flags, nullptr, nullptr, &refusal));
    const std::unique_ptr<GError, platform::Releaser<g_error_free>> error(refusal);
    if (!bus) {
        return {noBus(fmt::format("cannot be reached ({})", error ? error->message : "no reason given"))};
    }
    return {Finding::ok("session bus", "answers"), checkRunningHost(bus), checkPortal(bus)};
}

} // namespace host
