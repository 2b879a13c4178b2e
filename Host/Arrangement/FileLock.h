// A lock between processes, beside the file that it is for: flock(2) on a file of its own, which stays empty and is
// never removed. The kernel gives it back when its holder ends, however that ends.
//
// On the real disk only: what it is about is other processes.
#pragma once

#include "Platform/Foundation/Expected.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <chrono>
#include <filesystem>
#include <string>

namespace host {

struct LockError {
    enum class Kind {
        /// Another process has it.
        held,
        /// The file or its folder cannot be made.
        impossible,
    };
    Kind kind = Kind::impossible;
    /// In English: "cannot lock /home/ada/.config/widgethost/host.lock: Permission denied".
    std::string message;
};

class FileLock {
  public:
    /// Locks the file at `path`, until the lock ends. It is made if need be, and so are the folders above it, for the
    /// user alone (mode 0700). Waits for whoever has it until the timeout; not at all where that is 0. Any thread.
    static platform::Expected<FileLock, LockError> take(const std::filesystem::path& path,
                                                        std::chrono::milliseconds timeout);

  private:
    explicit FileLock(platform::FileDescriptor file) : file_(std::move(file)) {}
    platform::FileDescriptor file_;
};

} // namespace host
