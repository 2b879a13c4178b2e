#include "Platform/Foundation/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

class FileDescriptor {
  public:
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (isOpen()) {
            close(descriptor_);
        }
    }

    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

  private:
    int descriptor_;
};

/// Reads `size` bytes, or as many as there still are of a file that is cut short meanwhile.
std::optional<Data> readUpTo(const FileDescriptor& file, std::size_t size) {
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): memory that nobody fills with zeros first
    std::shared_ptr<char[]> content = std::make_shared_for_overwrite<char[]>(size);
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
    return Data(std::move(content), bytes);
}

std::optional<Data> map(const FileDescriptor& file, std::size_t size) {
    void* const address = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (address == MAP_FAILED) {
        return std::nullopt;
    }
    std::shared_ptr<const void> owner(address, [size](void* pages) { munmap(pages, size); });
    return Data(std::move(owner), std::string_view(static_cast<const char*>(address), size));
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
    return size <= mappingThreshold ? readUpTo(file, size) : map(file, size);
}

const DiskFileSystem& DiskFileSystem::shared() {
    static const DiskFileSystem disk;
    return disk;
}

} // namespace platform
