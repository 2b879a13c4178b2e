#include "Extension/Workspaces/WorkspacesWidget.h"

#include "Extension/Shared/ListWidget.h"
#include "Extension/Workspaces/WorkspacesViews.h"

namespace foliovault {

std::unique_ptr<platform::Widget> WorkspacesWidget::body() const {
    return listWidget<WorkspacesEntryView>(kind, provider,
                                           {.small = "Workspaces Small",
                                            .medium = "Workspaces Medium",
                                            .large = "Workspaces Large",
                                            .empty = "Workspaces Empty"});
}

} // namespace foliovault
