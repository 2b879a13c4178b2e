#include "Extension/Workspaces/WorkspacesConfiguration.h"

#include "Platform/Foundation/Localization.h"

namespace foliovault {

using namespace platform;

IntentDescription<WorkspacesIntent> WorkspacesIntent::description() {
    return {.title = localized("Workspaces"),
            .description = localized("Shows your FOLIOvault workspaces on the desktop."),
            .parameters = {}};
}

} // namespace foliovault
