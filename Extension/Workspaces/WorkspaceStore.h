// Reads the application's OrderedWorkspaces.plist.
//
// The file's root is an array of dictionaries, each a workspace, in the user's order:
//
//   key           of            value
//   "Name"        record        text; without it the record is no workspace
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
#include <vector>

namespace foliovault {

class WorkspaceStore : public ListStore {
  public:
    explicit WorkspaceStore(const Library& library)
        : ListStore(library, library.paths.workspacesURL, "WorkspaceStore") {}

    /// The store on the user's own file.
    static const WorkspaceStore& shared() {
        static const WorkspaceStore store(Library::shared());
        return store;
    }

    /// Returns all workspaces in the file's order; a name that stands there twice makes two.
    std::vector<WorkspaceItem> readFromPlist() const {
        return convertEach([](const platform::PropertyListValue& record) -> std::optional<WorkspaceItem> {
            static constexpr std::array<std::string_view, 2> keys{"Name", "workspace"};
            const RecordFields fields(record, keys);
            auto name = fields.string("Name");
            if (!name) {
                return std::nullopt;
            }
            return WorkspaceItem{.id = *std::move(name),
                                 .databaseCount = elementCount(fields["workspace"], "databases"),
                                 .windowCount = elementCount(fields["workspace"], "windows")};
        });
    }

  private:
    static std::int64_t elementCount(const std::optional<platform::PropertyListValue>& workspace,
                                     std::string_view key) {
        const auto value = workspace ? (*workspace)[key] : std::nullopt;
        return value ? static_cast<std::int64_t>(value->arrayCount().value_or(0)) : 0;
    }
};

} // namespace foliovault
