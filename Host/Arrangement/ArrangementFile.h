// The arrangement's file, arrangement.json in a folder of the host's own.
//
// Whoever reads meets a whole arrangement, the old one or the new one, also when a writer is killed or the disk is
// full. Changes of several processes follow each other, under a lock (arrangement.lock), so that none is lost. Whoever
// holds that lock for long makes the others' changes fail.
//
// What cannot be read is not thrown away: a broken file is copied to arrangement.json.broken-1, or the first such name
// that is free, before one that starts anew takes its place; a file of a newer version, or one that may not be read, is
// left where it is and not changed.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Platform/Foundation/Expected.h"
#include "Platform/Foundation/FileSystem.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace host {

struct ArrangementError {
    enum class Kind {
        /// The file is broken, of a newer version, or not to be read.
        unreadable,
        /// The change cannot be made to this arrangement.
        refused,
        /// The file or a copy of a broken one cannot be written, or the lock cannot be had.
        unwritable,
    };
    Kind kind = Kind::unreadable;
    /// One clear line.
    std::string message;
};

class ArrangementFile {
  public:
    /// The folder is absolute. It need not be there; the first change makes it. `files` must live as long as this.
    ArrangementFile(const platform::FileSystem& files, const std::filesystem::path& folder,
                    std::chrono::milliseconds lockTimeout = std::chrono::seconds(10))
        : files_(files), path_(folder / "arrangement.json"), lockPath_(folder / "arrangement.lock"),
          lockTimeout_(lockTimeout) {}

    const std::filesystem::path& path() const { return path_; }

    /// The arrangement as it is now; an empty one where there is no file. Changes nothing, waits for nobody. Any
    /// thread.
    platform::Expected<Arrangement, ArrangementError> load() const;

    struct Update {
        Arrangement arrangement;
        /// One line for the user where a broken file was set aside.
        std::optional<std::string> notice;
    };
    /// Makes a change to the arrangement as it is when all changes before are done. On an error the file is as it was.
    /// Waits for other changes until the lock's timeout, and for the disk; any thread.
    platform::Expected<Update, ArrangementError> update(const ArrangementChange& change) const;

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
    platform::Expected<Content, ArrangementError> read() const;
    /// Copies a broken file; the notice that says so.
    platform::Expected<std::string, ArrangementError> setAside(const BrokenFile& broken) const;
    platform::Unexpected<ArrangementError> refusal(const BrokenFile& broken) const;

    const platform::FileSystem& files_;
    std::filesystem::path path_;
    std::filesystem::path lockPath_;
    std::chrono::milliseconds lockTimeout_;
};

} // namespace host
