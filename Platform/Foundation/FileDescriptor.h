// An open descriptor that is closed with its owner.
#pragma once

#include <unistd.h>
#include <utility>

namespace platform {

class FileDescriptor {
  public:
    /// Takes over what open(2) and its like answered, also the -1 of a failure.
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
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

} // namespace platform
