#include "Host/Commands/DisplayCheck.h"

#include "Host/Commands/X11Check.h"
#include "Host/Desktop/LayerShell.h"

#include <fmt/format.h>

#include <cstdlib>
#include <cstring>
#include <iterator>

namespace host {
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here sets variables
    return value == nullptr ? "" : value;
}

/// What there is of Wayland. The last finding says how windows are kept, unless they are X11 windows.
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
                                         "have the compositor start Xwayland, or use one that has a layer shell"));
    }
    return findings;
}

} // namespace

Findings checkDisplay() {
    const std::string wayland = variable("WAYLAND_DISPLAY");
    const std::string x11 = variable("DISPLAY");
    // The toolkit's own variable holds.
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
        findings.push_back(Finding::problem(
            "compositor", "neither WAYLAND_DISPLAY nor DISPLAY is set: there is nowhere to show windows",
            "run it inside a graphical session; render and gallery need none"));
    }
    return findings;
}

} // namespace host
