// The Workspaces widget: its entries, views and declaration.
#pragma once

#include "Extension/Shared/ListWidget.h"
#include "Extension/Workspaces/WorkspaceItem.h"
#include "Extension/Workspaces/WorkspaceStore.h"
#include "Extension/Workspaces/WorkspacesConfiguration.h"

#include <memory>

namespace foliovault {

using WorkspacesEntry = ListEntry<WorkspaceItem>;
using WorkspacesProvider = ListProvider<WorkspacesEntry, WorkspacesIntent, WorkspaceStore>;

/// The list, or the empty view if the entry has no items.
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

struct WorkspacesWidget {
    WorkspacesProvider provider;
    std::unique_ptr<platform::Widget> body() const;
};

} // namespace foliovault
