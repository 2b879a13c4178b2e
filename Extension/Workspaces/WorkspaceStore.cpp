#include "Extension/Workspaces/WorkspaceStore.h"

#include "Extension/Shared/RecordFields.h"

#include <array>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

std::int64_t elementCount(const std::optional<PropertyListValue>& dictionary, std::string_view key) {
    const auto value = dictionary ? (*dictionary)[key] : std::nullopt;
    return value ? static_cast<std::int64_t>(value->arrayCount().value_or(0)) : 0;
}

} // namespace

const WorkspaceStore& WorkspaceStore::shared() {
    static const WorkspaceStore store(Library::shared());
    return store;
}

std::vector<WorkspaceItem> WorkspaceStore::readFromPlist() const {
    return convertEach([](const PropertyListValue& record) -> std::optional<WorkspaceItem> {
        static constexpr std::array<std::string_view, 2> keys{"Name", "workspace"};
        const RecordFields fields(record, keys);
        auto name = fields.string("Name");
        if (!name) {
            return std::nullopt;
        }
        const auto& content = fields["workspace"];
        return WorkspaceItem{.id = *std::move(name),
                             .databaseCount = elementCount(content, "databases"),
                             .windowCount = elementCount(content, "windows")};
    });
}

} // namespace foliovault
