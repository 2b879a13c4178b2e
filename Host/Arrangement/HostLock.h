// The right to show an arrangement: one host has it at a time, for as long as it lives.
//
// A file beside the arrangement's, host.lock, and another one than the commands' own, which they hold for a moment
// only: they go on while a host runs.
#pragma once

#include "Host/Arrangement/FileLock.h"

#include <filesystem>
#include <utility>

namespace host {

class HostLock {
  public:
    /// `folder` is the arrangement's. Does not wait; the error is of the kind `held` where another host runs.
    static platform::Expected<HostLock, LockError> take(const std::filesystem::path& folder) {
        auto lock = FileLock::take(folder / "host.lock", std::chrono::milliseconds(0));
        if (!lock) {
            return platform::Unexpected{lock.error()};
        }
        return HostLock(*std::move(lock));
    }

  private:
    explicit HostLock(FileLock lock) : lock_(std::move(lock)) {}
    FileLock lock_;
};

} // namespace host
