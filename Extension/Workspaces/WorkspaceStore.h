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
#include "Extension/Workspaces/WorkspaceItem.h"

#include <vector>

namespace foliovault {

class WorkspaceStore : public ListStore {
  public:
    explicit WorkspaceStore(const Library& library)
        : ListStore(library, library.paths.workspacesURL, "WorkspaceStore") {}

    /// The store on the user's own file.
    static const WorkspaceStore& shared();

    /// Returns all workspaces in the file's order; a name that stands there twice makes two.
    std::vector<WorkspaceItem> readFromPlist() const;
};

} // namespace foliovault
