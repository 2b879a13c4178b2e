// Files, as an effect that is handed in.
#pragma once

#include "Platform/Foundation/Data.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Why a file was not written.
struct FileError {
    /// In English, for the log: "cannot write /home/ada/notes.json: No space left on device".
    std::string description;
};

class FileSystem {
  public:
    virtual ~FileSystem() = default;
    /// The whole content of the regular file at `path` as it is now, or nothing: no file, no permission, or something
    /// that is no regular file (a folder, a pipe, a device), which is never waited for. Any thread.
    virtual std::optional<Data> read(const std::string& path) const = 0;

    /// Whether something has that name, be it readable or not; also where that cannot be found out. Any thread.
    virtual bool exists(const std::string& path) const = 0;

    /// Makes `bytes` the whole content of the file at `path`, which need not be there yet; its folder must be. Whoever
    /// reads meanwhile reads the old file or the new one, whole. Nothing when that is done, else why not, and then the
    /// old file is as it was. Of several writers at once the last one wins. Any thread.
    [[nodiscard]] virtual std::optional<FileError> replace(const std::string& path, std::string_view bytes) const = 0;

    /// The same for what can be made anew, such as a cache: the device is not waited for, so a power failure may leave
    /// a broken file where the old one was.
    [[nodiscard]] virtual std::optional<FileError> replaceUnflushed(const std::string& path,
                                                                    std::string_view bytes) const = 0;
};

/// The disk.
///
/// Reading: files up to `mappingThreshold` bytes are read, larger ones are mapped: their pages come in when they are
/// looked at and belong to the page cache. A mapped file that is cut short under our feet ends the process at the next
/// look (SIGBUS); one that is replaced by renaming, as the application does, stays whole.
///
/// Replacing: the bytes go to a file ".NAME.new" in the same folder, are flushed to the device, so that the old or the
/// new file is there after a power failure too, and take the old one's place by a rename. The new file is for its user
/// alone (mode 0600), whatever the old one was; a symbolic link at `path` is replaced itself, not what it leads to. The
/// name of the new file is always the same, so that one left over by a process that was killed is used by the next
/// writer; a lock (flock) has writers wait for each other, and goes with the process that holds it.
class DiskFileSystem final : public FileSystem {
  public:
    static constexpr std::size_t mappingThreshold = std::size_t{4} << 20U;

    std::optional<Data> read(const std::string& path) const override;
    bool exists(const std::string& path) const override;
    std::optional<FileError> replace(const std::string& path, std::string_view bytes) const override;
    std::optional<FileError> replaceUnflushed(const std::string& path, std::string_view bytes) const override;
    static const DiskFileSystem& shared();
};

} // namespace platform
