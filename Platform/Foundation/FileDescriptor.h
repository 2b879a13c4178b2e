// Owns an open descriptor and closes it.
#pragma once

#include <unistd.h>
#include <utility>

namespace platform {

class FileDescriptor {
  public:
    /// Takes the result of open(2) and similar calls, also the -1 of a failure.
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            close();
            descriptor_ = std::exchange(other.descriptor_, -1);
        }
        return *this;
    }
    ~FileDescriptor() { close(); }

    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

    void close() {
        if (isOpen()) {
            ::close(std::exchange(descriptor_, -1));
        }
    }

  private:
    int descriptor_;
};

} // namespace platform
