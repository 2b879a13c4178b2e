#include "Host/Arrangement/FileLock.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::FileDescriptor;
using platform::Unexpected;

/// errno says why, where it cannot be made.
bool makeFolder(const fs::path& folder) {
    if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) {
        return true;
    }
    const fs::path parent = folder.parent_path();
    return errno == ENOENT && parent != folder && makeFolder(parent) &&
           (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST);
}

bool lock(const FileDescriptor& file, FileLock::Patience patience) {
    const int operation = patience == FileLock::Patience::waits ? LOCK_EX : LOCK_EX | LOCK_NB;
    int result = 0;
    do {
        result = flock(file.get(), operation);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

Unexpected<LockError> cannotLock(const fs::path& path, int reason) {
    const auto kind = reason == EWOULDBLOCK ? LockError::Kind::held : LockError::Kind::impossible;
    // strerror would answer in the user's language.
    const char* const words = strerrordesc_np(reason);
    return {{kind, fmt::format("cannot lock {}: {}", path.string(), words != nullptr ? words : "unknown error")}};
}

} // namespace

platform::Expected<FileLock, LockError> FileLock::take(const fs::path& path, Patience patience) {
    if (!makeFolder(path.parent_path())) {
        return cannotLock(path, errno);
    }
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    if (!file.isOpen() || !lock(file, patience)) {
        return cannotLock(path, errno);
    }
    return FileLock(std::move(file));
}

} // namespace host
