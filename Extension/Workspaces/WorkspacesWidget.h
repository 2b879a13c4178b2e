// The Workspaces widget, as it is declared to the host.
#pragma once

#include "Extension/Workspaces/WorkspacesProvider.h"
#include "Platform/Widgets/Widget.h"

#include <memory>

namespace foliovault {

struct WorkspacesWidget {
    static constexpr const char* kind = "WorkspacesWidget";

    WorkspacesProvider provider;

    std::unique_ptr<platform::Widget> body() const;
};

} // namespace foliovault
