// The configuration of a Workspaces widget, which has no choices and shows all workspaces.
#pragma once

#include "Extension/Workspaces/WorkspaceItem.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Widgets/Intent.h"

namespace foliovault {

struct WorkspacesIntent {
    static platform::IntentDescription<WorkspacesIntent> description() {
        return {.title = platform::localized("Workspaces"),
                .description = platform::localized("Shows your FOLIOvault workspaces on the desktop."),
                .parameters = {}};
    }
    bool includes(const WorkspaceItem&) const { return true; }
};

} // namespace foliovault
