#include "Host/Commands/MachineChecks.h"

#include "Host/Desktop/LayerShell.h"
#include "Platform/Foundation/Releaser.h"

#include <fmt/format.h>
#include <gdk/gdkx.h>

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>

namespace host {
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here sets variables
    return value == nullptr ? "" : value;
}

/// The last finding says how windows stay on the desktop, unless they are X11 windows.
Findings checkWayland(const std::string& display, bool hasX11) {
    const auto version = layerShellVersion();
    if (!version) {
        return {Finding::problem("compositor",
                                 fmt::format("Wayland, {}: cannot be reached ({})", display,
                                             std::strerror(version.error())), // NOLINT(concurrency-mt-unsafe)
                                 "run it inside the graphical session, with its WAYLAND_DISPLAY and XDG_RUNTIME_DIR")};
    }
    Findings findings{Finding::ok("compositor", "Wayland, " + display)};
    if (*version > 0) {
        findings.push_back(Finding::ok(
            "windows", fmt::format("surfaces of the layer shell, version {}, under all windows", *version)));
    } else if (!hasX11) {
        findings.push_back(Finding::note("windows",
                                         "none: this compositor has no layer shell, and there is no X server",
                                         "enable Xwayland in the compositor, or use one that has a layer shell"));
    }
    return findings;
}

Findings checkX11(const std::string& name) {
    gdk_set_allowed_backends("x11");
    // GDK would start OpenGL at once. It reads the variable with its arguments.
    g_setenv("GDK_GL", "disable", TRUE);
    gdk_parse_args(nullptr, nullptr);
    const std::unique_ptr<GdkDisplay, platform::Releaser<gdk_display_close>> display(gdk_display_open(name.c_str()));
    if (!display) {
        return {Finding::problem("compositor", fmt::format("X11, {}: cannot be reached", name),
                                 "run it inside the graphical session, with its DISPLAY and XAUTHORITY")};
    }
    GdkScreen* const screen = gdk_display_get_default_screen(display.get());
    Findings findings{Finding::ok("compositor", "X11, " + name)};
    const std::string manager = gdk_x11_screen_get_window_manager_name(screen);
    if (manager == "unknown") {
        findings.push_back(Finding::note("window manager", "not found: widgets may cover other windows",
                                         "start a window manager that supports EWMH"));
    } else {
        findings.push_back(Finding::ok("window manager", manager));
        const auto desktopType = gdk_atom_intern_static_string("_NET_WM_WINDOW_TYPE_DESKTOP");
        findings.push_back(Finding::ok("windows", gdk_x11_screen_supports_net_wm_hint(screen, desktopType) != FALSE
                                                      ? "X11 windows of the desktop type, under all windows"
                                                      : "unmanaged X11 windows, under all windows: the window manager "
                                                        "does not support the desktop type"));
    }
    findings.push_back(gdk_screen_is_composited(screen) != FALSE
                           ? Finding::ok("compositing", "a compositing manager is running")
                           : Finding::note("compositing",
                                           "no compositing manager is running: widgets have opaque corners",
                                           "enable compositing in the window manager, or start a compositing manager"));
    return findings;
}

} // namespace

Findings checkDisplay() {
    const std::string wayland = variable("WAYLAND_DISPLAY");
    const std::string x11 = variable("DISPLAY");
    // The toolkit follows this variable.
    const std::string backend = variable("GDK_BACKEND");
    Findings findings;
    if (!wayland.empty() && backend != "x11") {
        findings = checkWayland(wayland, !x11.empty());
    }
    const bool hasWindows = !findings.empty() && findings.back().name == "windows";
    if (!x11.empty() && !hasWindows && backend != "wayland") {
        Findings more = checkX11(x11);
        std::move(more.begin(), more.end(), std::back_inserter(findings));
    }
    if (findings.empty()) {
        findings.push_back(Finding::problem("compositor",
                                            "neither WAYLAND_DISPLAY nor DISPLAY is set: windows cannot be shown",
                                            "run it inside a graphical session; render and gallery do not need one"));
    }
    return findings;
}

} // namespace host
