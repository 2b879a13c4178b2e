#include "Extension/Workspaces/WorkspacesProvider.h"

#include <utility>

namespace foliovault {

WorkspacesEntry WorkspacesEntry::sample() {
    const auto& samples = WorkspaceItem::sampleItems();
    return {.date = {}, .items = samples, .displayCount = static_cast<std::int64_t>(samples.size())};
}

WorkspacesEntry WorkspacesEntry::read(const WorkspaceStore& store, const WorkspacesIntent& /*intent*/) {
    auto [items, count] = store.readExcerpt();
    return {.date = {}, .items = std::move(items), .displayCount = count};
}

} // namespace foliovault
