// Landlock, the kernel's way for a process to give up access to files, the network and other processes for good.
//
// Best effort: what the running kernel's version of it cannot restrict stays allowed. Source: the kernel's
// Documentation/userspace-api/landlock.rst and include/uapi/linux/landlock.h, version 7 of the interface (Linux 6.15).
#pragma once

#include "Host/Connection/SandboxRules.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <cstdint>

namespace host {

/// The version of the kernel's interface; 0 where there is none, or where it is turned off.
///
/// 1: files; 2: moving between folders; 3: truncation; 4: TCP; 5: device control; 6: signals and abstract sockets.
int landlockVersion();

/// A process that it is applied to may do nothing of what this version can restrict, but for what is granted here.
class LandlockRuleset {
  public:
    /// A ruleset that grants no files, for a kernel of `version` or later; one that restricts nothing if that is 0.
    LandlockRuleset(NetworkAccess network, int version);

    /// Whether it restricts anything.
    bool isThere() const { return descriptor_.isOpen(); }

    enum class FileKind { folder, other };
    /// Grants access to the open file, or to all that is below the open folder; it may be closed then.
    void grant(const platform::FileDescriptor& file, FileKind kind, FileAccess access) const;

    /// Confines the calling thread, for good. Requires no-new-privileges. Returns an errno, 0 for success.
    /// Async-signal-safe.
    int apply() const noexcept;

  private:
    std::uint64_t restricted_ = 0;
    platform::FileDescriptor descriptor_;
};

} // namespace host
