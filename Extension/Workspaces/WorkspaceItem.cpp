#include "Extension/Workspaces/WorkspaceItem.h"

#include "Extension/Shared/DeepLink.h"
#include "Platform/Foundation/Localization.h"

#include <utility>

namespace foliovault {

using namespace platform;

namespace {

std::optional<URL> linkOf(std::string_view name) {
    const auto url = commandURL("open-workspace", "name", name);
    return url ? std::optional(taggedForWidget(*url, "workspaces")) : std::nullopt;
}

} // namespace

WorkspaceItem::WorkspaceItem(std::string name, std::int64_t databaseCount, std::int64_t windowCount)
    : id(name), name(std::move(name)), databaseCount(databaseCount), windowCount(windowCount), url(linkOf(id)) {}

std::string WorkspaceItem::databases() const {
    return localizedCount("%lld databases", databaseCount);
}

std::string WorkspaceItem::windows() const {
    return localizedCount("%lld windows", windowCount);
}

std::optional<std::string> WorkspaceItem::displaySubtitle() const {
    return databases() + " · " + windows();
}

const std::vector<WorkspaceItem>& WorkspaceItem::sampleItems() {
    static const std::vector<WorkspaceItem> items{
        {"Research", 3, 2}, {"Writing", 1, 1}, {"Archive", 5, 1}, {"Inbox Review", 2, 3}};
    return items;
}

} // namespace foliovault
