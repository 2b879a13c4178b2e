#include "Platform/Foundation/FileSystem.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

/// A descriptor that is closed with its owner.
class OpenFile {
  public:
    // Opening a pipe without O_NONBLOCK would wait for somebody to write into it.
    explicit OpenFile(const std::string& path) : descriptor_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    /// The size, if this is a regular file that is open.
    std::optional<std::size_t> size() const {
        struct stat status {};
        if (descriptor_ < 0 || fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(status.st_size);
    }

    /// Reads `size` bytes, or fewer where the file has become shorter meanwhile.
    std::optional<Data> read(std::size_t size) const {
        std::string bytes(size, '\0');
        std::size_t length = 0;
        while (length < size) {
            const ssize_t count = ::read(descriptor_, bytes.data() + length, size - length);
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count < 0) {
                return std::nullopt;
            }
            if (count == 0) {
                break;
            }
            length += static_cast<std::size_t>(count);
        }
        bytes.resize(length);
        return Data::owning(std::move(bytes));
    }

    std::optional<Data> map(std::size_t size) const {
        void* pages = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor_, 0);
        if (pages == MAP_FAILED) {
            return std::nullopt;
        }
        std::shared_ptr<const void> owner(pages, [size](void* mapped) { munmap(mapped, size); });
        return Data(std::move(owner), {static_cast<const char*>(pages), size});
    }

  private:
    int descriptor_;
};

} // namespace

std::optional<Data> DiskFileSystem::read(const std::string& path) const {
    const OpenFile file(path);
    const auto size = file.size();
    if (!size) {
        return std::nullopt;
    }
    return *size <= mappingThreshold ? file.read(*size) : file.map(*size);
}

const DiskFileSystem& DiskFileSystem::shared() {
    static const DiskFileSystem files;
    return files;
}

} // namespace platform
