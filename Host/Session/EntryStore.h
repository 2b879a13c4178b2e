// The last entry of each tile, on disk: what a host draws at its start until the extension has answered.
//
// A file a tile, ID.tile, in a folder for the user alone: entries tell what the user reads. Its lines are the moment
// when the entry came, what it was asked for, and a timeline as the protocol has it, with that entry alone. It is a
// cache. Any thread.
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
    /// From when on it counts as old.
    platform::Date reload;
};

class EntryStore {
  public:
    /// `folder` need not be there; `tileFolder()` is the host's own. A relative one never has any
    /// entries. `files` must live as long as this.
    EntryStore(const platform::FileSystem& files, std::filesystem::path folder)
        : files_(files), folder_(std::move(folder)) {}

    /// The tile's last entry, if it was made for this very extension, kind, family, configuration and rendering mode,
    /// and in the user's language. A file that is missing, broken or made for something else is nothing.
    std::optional<StoredEntry> load(const Instance& instance, const std::string& renderingMode) const;

    /// Replaces the tile's last entry. Returns why that failed.
    [[nodiscard]] std::optional<platform::FileError> save(const Instance& instance, const std::string& renderingMode,
                                                          const StoredEntry& entry) const;

    /// Removes the entries of all other tiles, and what writers of them left behind; touches no other files. On the
    /// real disk only.
    void keepOnly(const std::set<InstanceId>& ids) const;

  private:
    const platform::FileSystem& files_;
    std::filesystem::path folder_;
};

/// widgethost/tiles in the user's cache folder; relative if the user has none.
std::filesystem::path tileFolder();

} // namespace host
