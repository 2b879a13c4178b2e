// Answers the host's requests for the Workspaces widget.
#pragma once

#include "Extension/Shared/ListProvider.h"
#include "Extension/Workspaces/WorkspaceItem.h"
#include "Extension/Workspaces/WorkspaceStore.h"
#include "Extension/Workspaces/WorkspacesConfiguration.h"

#include <cstdint>
#include <vector>

namespace foliovault {

struct WorkspacesEntry {
    platform::Date date;
    /// Those to show.
    std::vector<WorkspaceItem> items;
    /// How many there are.
    std::int64_t displayCount = 0;

    static WorkspacesEntry sample();
    static WorkspacesEntry read(const WorkspaceStore& store, const WorkspacesIntent& intent);
};

using WorkspacesProvider = ListProvider<WorkspacesEntry, WorkspacesIntent, WorkspaceStore>;

} // namespace foliovault
