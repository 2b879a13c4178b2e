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
    /// Returns the whole content of the regular file at `path`; of a file that is cut short meanwhile, what was left.
    /// Nothing without the file, a permission or the memory, and for a folder, a pipe or a device, without waiting.
    /// Any thread.
    virtual std::optional<Data> read(const std::string& path) const = 0;

    /// Whether something has that name, be it readable or not; also where that cannot be found out. Any thread.
    virtual bool exists(const std::string& path) const = 0;

    /// Makes `bytes` the whole content of the file at `path`, which may be missing; its folder must exist. Readers see
    /// the old file or the new one, whole. Returns why it failed, and then the old file is as it was. Of several writers
    /// at once the last one wins. Any thread.
    [[nodiscard]] virtual std::optional<FileError> replace(const std::string& path, std::string_view bytes) const = 0;

    /// The same for what can be made anew, such as a cache: the device is not waited for, so a power failure may leave
    /// a broken file where the old one was.
    [[nodiscard]] virtual std::optional<FileError> replaceUnflushed(const std::string& path,
                                                                    std::string_view bytes) const = 0;
};

/// The disk.
///
/// Reading: a file of more than `maxFileSize` bytes counts as unreadable. Files are never mapped, since one that is cut
/// short under a mapping ends the process.
///
/// Replacing: the bytes go to a file ".NAME.new" in the same folder, are flushed to the device, so that the old or the
/// new file is there after a power failure too, and take the old one's place by a rename. The new file is for its user
/// alone (mode 0600), whatever the old one was; a symbolic link at `path` is replaced itself, not what it leads to.
/// The new file is locked (flock) while it is written, and the lock goes with the process that holds it. Writers
/// do not wait: while one writes, the next takes ".NAME.new1", and so on, up to `maxWriters` at once. The names are
/// always the same, so that a later writer uses a file that a killed process left.
class DiskFileSystem final : public FileSystem {
  public:
    static constexpr std::size_t maxFileSize = std::size_t{512} << 20U;
    static constexpr int maxWriters = 8;

    std::optional<Data> read(const std::string& path) const override;
    bool exists(const std::string& path) const override;
    std::optional<FileError> replace(const std::string& path, std::string_view bytes) const override;
    std::optional<FileError> replaceUnflushed(const std::string& path, std::string_view bytes) const override;
    static const DiskFileSystem& shared();
};

} // namespace platform
