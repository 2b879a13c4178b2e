// A lock between processes: flock(2) on a file of its own, which stays empty and is never removed. The kernel releases
// it when the process ends.
#pragma once

#include "Platform/Foundation/Failure.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <chrono>
#include <filesystem>

namespace host {

class FileLock {
  public:
    /// Locks the file at `path` while the value lives. Creates the file, and missing folders with mode 0700. Fails with
    /// `unavailable` if another process has the lock until the timeout, with `unwritable` if the file or a folder
    /// cannot be created. Any thread.
    static platform::Outcome<FileLock> lock(const std::filesystem::path& path, std::chrono::milliseconds timeout);
    /// Locks without waiting.
    static platform::Outcome<FileLock> tryLock(const std::filesystem::path& path) {
        return lock(path, std::chrono::milliseconds(0));
    }

  private:
    explicit FileLock(platform::FileDescriptor file) : file_(std::move(file)) {}
    platform::FileDescriptor file_;
};

} // namespace host
