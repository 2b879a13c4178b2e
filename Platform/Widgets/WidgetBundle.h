// The widgets of an extension, in the order in which a host lists them, and how they run.
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
    /// Called once at the end of input, if set. Returns soon, after all remaining replies.
    std::function<void()> inputEnded;
};

/// Serves the bundle over standard input and output until the host ends it. Returns the process's exit code.
int runBundle(const WidgetBundle& bundle);

} // namespace platform
