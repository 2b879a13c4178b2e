// The last face of each tile, on disk: what a host shows at its start until the extension has answered.
//
// A file a tile, ID.tile (StoredFace.h), in a folder for the user alone: the pictures show what the user reads. It is a
// cache; whoever deletes it loses nothing but a moment. All that takes this takes is bounded, whatever the files are.
// Any thread.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Pictures/Face.h"
#include "Platform/Foundation/FileSystem.h"

#include <filesystem>
#include <optional>
#include <set>

namespace host {

class PictureStore {
  public:
    /// `folder` need not be there; `tilePictureFolder()` is the host's own. In a relative one there are never any
    /// pictures. `files` must live as long as this.
    PictureStore(const platform::FileSystem& files, std::filesystem::path folder)
        : files_(files), folder_(std::move(folder)) {}

    /// The tile's last face, if it was made for this very extension, kind, family and configuration. A file that is
    /// missing, broken or made for something else is nothing.
    std::optional<Face> load(const Instance& instance) const;

    /// Puts `face` in the place of the tile's last one. Nothing when that is done, else one line that says why not.
    [[nodiscard]] std::optional<platform::FileError> save(const Instance& instance, const Face& face) const;

    /// Removes the pictures of all other tiles, and what writers of them left behind; touches no other files. On the
    /// real disk only.
    void keepOnly(const std::set<InstanceId>& ids) const;

  private:
    const platform::FileSystem& files_;
    std::filesystem::path folder_;
};

/// widgethost/tiles in the user's cache folder; relative where the user has none.
std::filesystem::path tilePictureFolder();

} // namespace host
