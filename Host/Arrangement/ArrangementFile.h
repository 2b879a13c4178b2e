// The arrangement's file, arrangement.json in a folder of the host's own.
//
// A reader sees a whole arrangement, the old one or the new one, also when a writer is killed or the disk is full.
// Changes of several processes follow each other, under a lock (arrangement.lock), so that none is lost.
//
// A file that cannot be read is not lost: a broken one is copied to arrangement.json.broken-1, or the first such name
// that is free, before a new one takes its place; one of a newer version, or that may not be read, is left unchanged.
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
    /// The folder is absolute. It need not be there; the first change makes it. `files` must live as long as this.
    ArrangementFile(const platform::FileSystem& files, const std::filesystem::path& folder,
                    std::chrono::milliseconds lockTimeout = std::chrono::seconds(10))
        : files_(files), path_(folder / "arrangement.json"), lockPath_(folder / "arrangement.lock"),
          lockTimeout_(lockTimeout) {}

    const std::filesystem::path& path() const { return path_; }

    /// Returns the arrangement as it is now, an empty one if there is no file. Fails with `unreadable`. Changes nothing
    /// and does not wait. Any thread.
    platform::Outcome<Arrangement> load() const;

    struct Update {
        Arrangement arrangement;
        /// One line for the user where a broken file was set aside.
        std::optional<std::string> notice;
    };
    /// Makes a change to the arrangement as it is when all changes before are done. Fails with `usage` if the change
    /// cannot be made, `unreadable`, or `unwritable` if the file, a copy of a broken one or the lock cannot be had; the
    /// file is then as it was. Waits for other changes until the lock's timeout, and for the disk; any thread.
    platform::Outcome<Update> update(const ArrangementChange& change) const;

  private:
    struct BrokenFile {
        platform::Data bytes;
        std::string reason;
    };
    /// What is found; with a broken file, an empty arrangement.
    struct Content {
        Arrangement arrangement;
        std::optional<BrokenFile> broken;
    };
    platform::Outcome<Content> read() const;
    /// Copies a broken file; the notice that says so.
    platform::Outcome<std::string> setAside(const BrokenFile& broken) const;
    platform::Unexpected<platform::Failure> refusal(const BrokenFile& broken) const;

    const platform::FileSystem& files_;
    std::filesystem::path path_;
    std::filesystem::path lockPath_;
    std::chrono::milliseconds lockTimeout_;
};

} // namespace host
