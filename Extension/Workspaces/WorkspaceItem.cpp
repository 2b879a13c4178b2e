#include "Extension/Workspaces/WorkspaceItem.h"

#include "Extension/Shared/DeepLink.h"
#include "Platform/Foundation/Localization.h"

namespace foliovault {

using namespace platform;

std::string WorkspaceItem::databases() const {
    return localizedCount("%lld databases", databaseCount);
}

std::string WorkspaceItem::windows() const {
    return localizedCount("%lld windows", windowCount);
}

std::optional<URL> WorkspaceItem::displayURL() const {
    const auto url = commandURL("open-workspace", "name", id);
    return url ? std::optional(taggedForWidget(*url, "workspaces")) : std::nullopt;
}

const std::vector<WorkspaceItem>& WorkspaceItem::sampleItems() {
    static const std::vector<WorkspaceItem> items{
        {.id = "Research", .databaseCount = 3, .windowCount = 2},
        {.id = "Writing", .databaseCount = 1, .windowCount = 1},
        {.id = "Archive", .databaseCount = 5, .windowCount = 1},
        {.id = "Inbox Review", .databaseCount = 2, .windowCount = 3},
    };
    return items;
}

} // namespace foliovault
