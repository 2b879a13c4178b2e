// The widgets of one extension, in the order in which a host lists them, and how they are run.
#pragma once

#include "Platform/Widgets/Widget.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform {

struct WidgetBundle {
    /// Names the extension to the host, as in "net.foliovault.widgets".
    std::string identifier;
    std::vector<std::unique_ptr<Widget>> widgets;
    /// Called once, if there is one, when the host has ended the input. Returns soon, when all later replies are given.
    std::function<void()> inputEnded;
};

/// Serves the bundle over standard input and output until the host ends it. Returns the process's exit code.
int runBundle(const WidgetBundle& bundle);

} // namespace platform
