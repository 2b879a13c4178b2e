#include "Host/Doctor/DisplayCheck.h"

#include "Host/Doctor/WaylandCheck.h"
#include "Host/Doctor/X11Check.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace host {
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here sets variables
    return value == nullptr ? "" : value;
}

bool hasProblem(const Findings& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& each) { return each.state == Finding::State::problem; });
}

} // namespace

Findings checkDisplay() {
    const std::string wayland = variable("WAYLAND_DISPLAY");
    const std::string x11 = variable("DISPLAY");
    Findings findings;
    if (!wayland.empty()) {
        findings = checkWayland(wayland);
    }
    if (!x11.empty() && (wayland.empty() || hasProblem(findings))) {
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
