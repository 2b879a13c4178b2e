// Files, as an effect that is passed in.
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
    /// Returns the whole content of the regular file at `path`; what is left of it if it is cut short meanwhile.
    /// Returns nothing without the file, the permission or the memory, and for a folder, a pipe or a device. Does not
    /// wait. Any thread.
    virtual std::optional<Data> read(const std::string& path) const = 0;

    /// Returns whether that name exists, readable or not. Returns true if that cannot be determined. Any thread.
    virtual bool exists(const std::string& path) const = 0;

    /// Replaces or creates the file at `path` with the content `bytes`. Requires its folder. Readers see the whole old
    /// file or the whole new one. After an error the old file is unchanged. Of several writers at once the last one
    /// wins. Any thread.
    [[nodiscard]] virtual std::optional<FileError> replace(const std::string& path, std::string_view bytes) const = 0;

    /// The same for files that can be made again, such as caches: does not wait for the device, so a power failure may
    /// leave a broken file.
    [[nodiscard]] virtual std::optional<FileError> replaceUnflushed(const std::string& path,
                                                                    std::string_view bytes) const = 0;
};

/// The disk.
///
/// Reading: a file of more than `maxFileSize` bytes counts as unreadable. Files are never mapped, since a mapped file
/// that is cut short would kill the process.
///
/// Replacing: the bytes are written to a file ".NAME.new" in the same folder and flushed to the device, so that the old
/// or the new file exists after a power failure too. Then that file is renamed. It has mode 0600, whatever the old one
/// had. A symbolic link at `path` is replaced, not its target. The new file is locked (flock) while it is written, and
/// the lock ends with its process. Writers do not wait: while one writes, the next takes ".NAME.new1", and so on, up to
/// `maxWriters` at once. The names are always the same, so that a later writer reuses the file of a killed process.
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
