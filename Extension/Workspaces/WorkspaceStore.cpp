#include "Extension/Workspaces/WorkspaceStore.h"

#include "Extension/Shared/RecordFields.h"

#include <array>
#include <span>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

enum Key : std::size_t { name, workspace, keyCount };
constexpr std::array<std::string_view, keyCount> keys{"Name", "workspace"};

std::int64_t elementCount(const std::optional<PropertyListValue>& dictionary, std::string_view key) {
    const auto value = dictionary ? (*dictionary)[key] : std::nullopt;
    return value ? static_cast<std::int64_t>(value->arrayCount().value_or(0)) : 0;
}

std::optional<WorkspaceItem> itemOf(const PropertyListValue& record) {
    const RecordFields fields(record, std::span(keys));
    auto itemName = fields.string(name);
    if (!itemName) {
        return std::nullopt;
    }
    const auto& content = fields.value(workspace);
    return WorkspaceItem(*std::move(itemName), elementCount(content, "databases"), elementCount(content, "windows"));
}

bool isWorkspace(const PropertyListValue& record) {
    return RecordFields(record, std::span(keys).first<1>()).hasString(name);
}

} // namespace

WorkspaceStore::WorkspaceStore(const Library& library)
    : file_(library, library.paths.workspacesURL, "WorkspaceStore") {}

const WorkspaceStore& WorkspaceStore::shared() {
    static const WorkspaceStore store(Library::shared());
    return store;
}

std::vector<WorkspaceItem> WorkspaceStore::readFromPlist() const {
    return file_.convertEach(itemOf);
}

ListExcerpt<WorkspaceItem> WorkspaceStore::readExcerpt() const {
    ListExcerpt<WorkspaceItem> excerpt;
    file_.forEachRecord([&excerpt](const PropertyListValue& record) {
        if (isWorkspace(record)) {
            excerpt.add([&record] { return itemOf(record); });
        }
    });
    return excerpt;
}

} // namespace foliovault
