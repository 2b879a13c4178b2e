#include "Host/Arrangement/FileLock.h"

#include <fmt/format.h>
#include <glib.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::Failure;
using platform::FileDescriptor;
using platform::Unexpected;

constexpr std::chrono::milliseconds retryInterval{2};

/// Polls, because flock itself has no timeout.
bool acquire(const FileDescriptor& file, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(retryInterval);
    }
    return true;
}

Unexpected<Failure> cannotLock(const fs::path& path, int reason) {
    if (reason == EWOULDBLOCK) {
        return platform::unavailable(fmt::format("cannot lock {}: another process has it", path.string()));
    }
    // strerror would translate.
    const char* const words = strerrordesc_np(reason);
    return {{Failure::Kind::unwritable,
             fmt::format("cannot lock {}: {}", path.string(), words != nullptr ? words : "unknown error")}};
}

} // namespace

platform::Outcome<FileLock> FileLock::lock(const fs::path& path, std::chrono::milliseconds timeout) {
    if (g_mkdir_with_parents(path.parent_path().c_str(), 0700) != 0) {
        return cannotLock(path, errno);
    }
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    if (!file.isOpen() || !acquire(file, timeout)) {
        return cannotLock(path, errno);
    }
    return FileLock(std::move(file));
}

} // namespace host
