// A lock between processes: flock(2) on a file of its own, which stays empty and is never removed. The kernel releases
// it when its process ends, however that ends.
#pragma once

#include "Platform/Foundation/Failure.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <chrono>
#include <filesystem>

namespace host {

class FileLock {
  public:
    /// Locks the file at `path` for as long as the value lives. Makes the file if it is missing, and the folders above
    /// it for the user alone (mode 0700). Waits until the timeout for another process that has the lock, then fails
    /// with `unavailable`. Fails with `unwritable` if the file or a folder cannot be made. Any thread.
    static platform::Outcome<FileLock> lock(const std::filesystem::path& path, std::chrono::milliseconds timeout);
    /// The same without waiting.
    static platform::Outcome<FileLock> tryLock(const std::filesystem::path& path) {
        return lock(path, std::chrono::milliseconds(0));
    }

  private:
    explicit FileLock(platform::FileDescriptor file) : file_(std::move(file)) {}
    platform::FileDescriptor file_;
};

} // namespace host
