// A cache of each tile's last entry, on disk. A host draws it at its start, until the extension has responded.
//
// Each tile has a file, ID.tile, in a folder that only the user can read, since entries are private. Its three lines
// are the date when the entry came, a key of all that it depends on, and a timeline of the protocol with that entry
// alone. Any thread.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"
#include "Platform/Foundation/FileSystem.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>

namespace host {

struct StoredEntry {
    Entry entry;
    /// When it came.
    platform::Date made;
    /// When it becomes outdated.
    platform::Date reload;
};

class EntryStore {
  public:
    /// The host uses `tileFolder()`. `folder` need not exist; a relative one never has entries. `files` must outlive
    /// this.
    EntryStore(const platform::FileSystem& files, std::filesystem::path folder)
        : files_(files), folder_(std::move(folder)) {}

    /// Returns the tile's last entry, if it was made for the same extension, kind, family, configuration, rendering
    /// mode and languages; nothing if the file is missing or broken.
    std::optional<StoredEntry> load(const Instance& instance, const std::string& renderingMode) const;

    /// Replaces the tile's last entry. Returns the error if that fails.
    [[nodiscard]] std::optional<platform::FileError> save(const Instance& instance, const std::string& renderingMode,
                                                          const StoredEntry& entry) const;

    /// Removes the entries of all other tiles, and their unfinished files. On the real disk only.
    void keepOnly(const std::set<InstanceId>& ids) const;

  private:
    const platform::FileSystem& files_;
    std::filesystem::path folder_;
};

/// Returns widgethost/tiles in the user's cache folder; a relative path if the user has none.
std::filesystem::path tileFolder();

} // namespace host
