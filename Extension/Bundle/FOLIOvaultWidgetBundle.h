// The extension's widgets, in the order in which a host lists them, and the entry of its process.
#pragma once

#include "Platform/Widgets/WidgetBundle.h"

#include <memory>
#include <vector>

namespace foliovault {

struct FOLIOvaultWidgetBundle {
    std::vector<std::unique_ptr<platform::Widget>> body() const;

    /// Runs the bundle under its host. Returns the process's exit code.
    static int main();
};

} // namespace foliovault
