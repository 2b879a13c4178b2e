// The arrangement's file: arrangement.json in the host's own folder.
//
// Readers see the whole old arrangement or the whole new one, even when a writer is killed or the disk is full. A lock
// (arrangement.lock) orders changes of several processes, so that each counts.
//
// No file is lost. A broken one is copied to arrangement.json.broken-1, or the first free name of that form, before it
// is replaced. One of a newer version, or without permission to read, stays unchanged.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Platform/Foundation/Failure.h"
#include "Platform/Foundation/FileSystem.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace host {

class ArrangementFile {
  public:
    /// `folder` is absolute; the first change creates it. `files` must outlive this.
    ArrangementFile(const platform::FileSystem& files, const std::filesystem::path& folder,
                    std::chrono::milliseconds lockTimeout = std::chrono::seconds(10))
        : files_(files), path_(folder / "arrangement.json"), lockPath_(folder / "arrangement.lock"),
          lockTimeout_(lockTimeout) {}

    const std::filesystem::path& path() const { return path_; }

    /// Returns the present arrangement, empty without a file. Fails with `unreadable`. Changes nothing, takes no lock.
    /// Any thread.
    platform::Outcome<Arrangement> load() const;

    struct Update {
        Arrangement arrangement;
        /// One line for the user if a broken file was set aside.
        std::optional<std::string> notice;
    };
    /// Applies a change to the file. Fails with `usage` if the change is invalid, with `unreadable`, or with
    /// `unwritable` if the file, a copy of a broken one, or the lock cannot be made; the file then stays as it was.
    /// Waits for the disk, and for other changes until the lock's timeout. Any thread.
    platform::Outcome<Update> update(const ArrangementChange& change) const;

  private:
    struct BrokenFile {
        platform::Data bytes;
        std::string reason;
    };
    /// The arrangement is empty if the file is broken.
    struct Content {
        Arrangement arrangement;
        std::optional<BrokenFile> broken;
    };
    platform::Outcome<Content> read() const;
    /// Copies a broken file. Returns the notice.
    platform::Outcome<std::string> setAside(const BrokenFile& broken) const;
    platform::Unexpected<platform::Failure> refusal(const BrokenFile& broken) const;

    const platform::FileSystem& files_;
    std::filesystem::path path_;
    std::filesystem::path lockPath_;
    std::chrono::milliseconds lockTimeout_;
};

} // namespace host
