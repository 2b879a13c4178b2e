#include "Platform/Foundation/FileSystem.h"

#include "Platform/Foundation/FileDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

/// Asks the kernel for large pages: reading a large file spends most of its time in page faults.
void preferLargePages(char* memory, std::size_t size) {
    constexpr std::size_t pageSize = 4096;
    void* start = memory;
    if (std::align(pageSize, pageSize, start, size) != nullptr) {
        madvise(start, size, MADV_HUGEPAGE);
    }
}

/// Reads `size` bytes, or fewer if the file is cut short meanwhile.
std::optional<Data> readUpTo(const FileDescriptor& file, std::size_t size) {
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): memory that is not filled with zeros first
    const std::shared_ptr<char[]> content(new (std::nothrow) char[size]);
    if (!content) {
        return std::nullopt;
    }
    preferLargePages(content.get(), size);
    std::size_t length = 0;
    while (length < size) {
        const ssize_t count = read(file.get(), content.get() + length, size - length);
        if (count == 0) {
            break;
        }
        if (count > 0) {
            length += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    const std::string_view bytes(content.get(), length);
    return Data(content, bytes);
}

/// "/folder/name" becomes "/folder/.name.new".
std::string newFileBeside(const std::string& path) {
    const std::size_t name = path.rfind('/') + 1;
    return path.substr(0, name) + "." + path.substr(name) + ".new";
}

bool isNamed(const FileDescriptor& file, const std::string& path) {
    struct stat ours {};
    struct stat named {};
    return fstat(file.get(), &ours) == 0 && lstat(path.c_str(), &named) == 0 && ours.st_dev == named.st_dev &&
           ours.st_ino == named.st_ino;
}

/// Opens or creates a file at `path` for this writer alone. Adds a number to `path` if other writers have that file.
/// Returns a closed descriptor and sets errno if all are taken.
FileDescriptor openAlone(std::string& path) {
    const std::size_t length = path.size();
    for (int writer = 1; writer <= DiskFileSystem::maxWriters; ++writer) {
        // With O_NONBLOCK, opening a pipe does not wait for its reader.
        FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
        if (!file.isOpen()) {
            return file;
        }
        if (flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
            // Otherwise another writer has just renamed the file.
            if (isNamed(file, path)) {
                return file;
            }
        } else if (errno != EWOULDBLOCK) {
            return FileDescriptor(-1);
        }
        path.replace(length, std::string::npos, std::to_string(writer));
    }
    errno = EWOULDBLOCK;
    return FileDescriptor(-1);
}

bool writeAll(const FileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file.get(), bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

FileError cannotWrite(const std::string& path, int reason) {
    // strerror writes in the user's language.
    const char* const words = strerrordesc_np(reason);
    return {"cannot write " + path + ": " + (words != nullptr ? words : "unknown error")};
}

enum class Flush { toDevice, later };

std::optional<FileError> replaceFile(const std::string& path, std::string_view bytes, Flush flush) {
    std::string newPath = newFileBeside(path);
    const FileDescriptor file = openAlone(newPath);
    if (!file.isOpen()) {
        return cannotWrite(path, errno);
    }
    const bool isReplaced = ftruncate(file.get(), 0) == 0 && writeAll(file, bytes) &&
                            (flush == Flush::later || fdatasync(file.get()) == 0) &&
                            rename(newPath.c_str(), path.c_str()) == 0;
    if (isReplaced) {
        return std::nullopt;
    }
    const int reason = errno;
    unlink(newPath.c_str());
    return cannotWrite(path, reason);
}

} // namespace

std::optional<Data> DiskFileSystem::read(const std::string& path) const {
    // Without O_NONBLOCK, opening a pipe would wait for its writer.
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    return size <= maxFileSize ? readUpTo(file, size) : std::nullopt;
}

bool DiskFileSystem::exists(const std::string& path) const {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

std::optional<FileError> DiskFileSystem::replace(const std::string& path, std::string_view bytes) const {
    return replaceFile(path, bytes, Flush::toDevice);
}

std::optional<FileError> DiskFileSystem::replaceUnflushed(const std::string& path, std::string_view bytes) const {
    return replaceFile(path, bytes, Flush::later);
}

const DiskFileSystem& DiskFileSystem::shared() {
    static const DiskFileSystem disk;
    return disk;
}

} // namespace platform
