// The Workspaces widget's pictures.
#pragma once

#include "Extension/Workspaces/WorkspacesProvider.h"
#include "Platform/Views/View.h"
#include "Platform/Widgets/Environment.h"

namespace foliovault {

/// The list, or the empty view where there is nothing to list.
struct WorkspacesEntryView {
    const WorkspacesEntry& entry;
    platform::View body(const platform::Environment& environment) const;
};

/// A workspace in the large families: its counts, each with its symbol, under the name.
struct WorkspaceDetailRow {
    const WorkspaceItem& item;
    platform::View body() const;
};

struct WorkspacesEmptyView {
    platform::View body() const;
};

} // namespace foliovault
