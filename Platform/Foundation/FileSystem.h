// Files, as an effect that is handed in.
#pragma once

#include "Platform/Foundation/Data.h"

#include <optional>
#include <string>

namespace platform {

class FileSystem {
  public:
    virtual ~FileSystem() = default;
    /// The whole content of the regular file at `path` as it is now, or nothing: no file, no permission, or something
    /// that is no regular file (a folder, a pipe, a device), which is never waited for. Any thread.
    virtual std::optional<Data> read(const std::string& path) const = 0;
};

/// The disk. Files up to `mappingThreshold` bytes are read, larger ones are mapped: their pages come in when they are
/// looked at and belong to the page cache. A mapped file that is cut short under our feet ends the process at the next
/// look (SIGBUS); one that is replaced by renaming, as the application does, stays whole.
class DiskFileSystem final : public FileSystem {
  public:
    static constexpr std::size_t mappingThreshold = std::size_t{4} << 20U;

    std::optional<Data> read(const std::string& path) const override;
    static const DiskFileSystem& shared();
};

} // namespace platform
