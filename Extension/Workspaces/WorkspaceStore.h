// Reads the application's OrderedWorkspaces.plist, afresh on every call.
//
// The file's root is an array of dictionaries, each a workspace, in the user's order:
//
//   key           of            value
//   "Name"        record        text; without it the record is no workspace
//   "workspace"   record        dictionary; without it both counts are 0
//   "databases"   "workspace"   array, of which the number of elements counts; anything else counts 0
//   "windows"     "workspace"   the same
//
// Log category "WorkspaceStore". The store has no state: any thread, any number at once.
#pragma once

#include "Extension/Shared/Library.h"
#include "Extension/Shared/ListExcerpt.h"
#include "Extension/Shared/PropertyListFile.h"
#include "Extension/Workspaces/WorkspaceItem.h"

#include <string>
#include <vector>

namespace foliovault {

class WorkspaceStore {
  public:
    explicit WorkspaceStore(const Library& library);

    /// The store on the user's own file.
    static const WorkspaceStore& shared();

    /// All workspaces in the file's order; a name that stands there twice makes two.
    std::vector<WorkspaceItem> readFromPlist() const;

    ListExcerpt<WorkspaceItem> readExcerpt() const;

    /// As `PropertyListFile::watches`.
    std::vector<std::string> watches() const { return file_.watches(); }

  private:
    PropertyListFile file_;
};

} // namespace foliovault
