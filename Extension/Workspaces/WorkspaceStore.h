// Reads the application's OrderedWorkspaces.plist.
//
// The file's root is an array of dictionaries, each a workspace, in the user's order:
//
//   key           of            value
//   "Name"        record        text, required
//   "workspace"   record        dictionary; without it both counts are 0
//   "databases"   "workspace"   array, of which the number of elements counts; anything else counts 0
//   "windows"     "workspace"   the same
//
// Log category "WorkspaceStore".
#pragma once

#include "Extension/Shared/ListStore.h"
#include "Extension/Shared/RecordFields.h"
#include "Extension/Workspaces/WorkspaceItem.h"

#include <array>
#include <utility>

namespace foliovault {

class WorkspaceStore : public ListStore<WorkspaceItem> {
  public:
    explicit WorkspaceStore(const Library& library)
        : ListStore(library, library.paths.workspacesURL, "WorkspaceStore") {}

    /// The store on the user's own file.
    static const WorkspaceStore& shared() {
        static const WorkspaceStore store(Library::shared());
        return store;
    }

  private:
    void visitItems(const platform::PropertyListValue& record, const Visit& visit) const override {
        static constexpr std::array<std::string_view, 2> keys{"Name", "workspace"};
        const RecordFields<keys> fields(record);
        if (auto name = fields.string("Name")) {
            visit({.id = *std::move(name),
                   .databaseCount = elementCount(fields["workspace"], "databases"),
                   .windowCount = elementCount(fields["workspace"], "windows")});
        }
    }

    static std::int64_t elementCount(const std::optional<platform::PropertyListValue>& workspace,
                                     std::string_view key) {
        const auto value = workspace ? (*workspace)[key] : std::nullopt;
        return value ? static_cast<std::int64_t>(value->arrayCount().value_or(0)) : 0;
    }
};

} // namespace foliovault
