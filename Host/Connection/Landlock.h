// Landlock, the kernel's way for a process to give up access to files, the network and other processes for good.
//
// Best effort: what the running kernel's version of it cannot restrict stays allowed. Source: the kernel's
// Documentation/userspace-api/landlock.rst and include/uapi/linux/landlock.h, version 7 of the interface (Linux 6.15).
#pragma once

#include "Host/Connection/SandboxRules.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <cstdint>

namespace host {

/// Returns the version of the kernel's interface; 0 if the kernel lacks it or has it disabled.
///
/// 1: files; 2: moving between folders; 3: truncation; 4: TCP; 5: device control; 6: signals and abstract sockets.
int landlockVersion();

/// Denies everything that the version can restrict, except for what is granted.
class LandlockRuleset {
  public:
    /// Makes a ruleset that grants no files. Restricts nothing if `version` is 0.
    LandlockRuleset(NetworkAccess network, int version);

    /// Whether it restricts anything.
    bool isActive() const { return descriptor_.isOpen(); }

    enum class FileKind { folder, other };
    /// Grants access to the open file, or to everything below the open folder. It may be closed afterwards.
    void grant(const platform::FileDescriptor& file, FileKind kind, FileAccess access) const;

    /// Confines the calling thread permanently. Requires no-new-privileges. Returns an errno, 0 for success.
    /// Async-signal-safe.
    int apply() const noexcept;

  private:
    std::uint64_t restricted_ = 0;
    platform::FileDescriptor descriptor_;
};

} // namespace host
