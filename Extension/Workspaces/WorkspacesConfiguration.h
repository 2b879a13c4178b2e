// What the user may choose for a Workspaces widget: nothing, it shows all workspaces.
#pragma once

#include "Platform/Widgets/Intent.h"

namespace foliovault {

struct WorkspacesIntent {
    static platform::IntentDescription<WorkspacesIntent> description();
};

} // namespace foliovault
