// Landlock, the kernel's way for a process to give up access to files, the network and other processes for good.
//
// Best effort: what the running kernel's version of it cannot restrict stays allowed. Source: the kernel's
// Documentation/userspace-api/landlock.rst and include/uapi/linux/landlock.h, version 7 of the interface (Linux 6.15).
#pragma once

#include "Host/Connection/ConfinementRules.h"
#include "Platform/Foundation/FileDescriptor.h"

namespace host {

/// The version of the kernel's interface; 0 where there is none, or where it is turned off.
///
/// 1: files; 2: moving between folders; 3: truncation; 4: TCP; 5: device control; 6: signals and abstract sockets.
int landlockVersion();

/// The rules in the kernel's form, with what a kernel of `version` can restrict; closed where nothing can be. Paths
/// that do not exist are left out.
platform::FileDescriptor makeLandlockRuleset(const ConfinementRules& rules, int version);

/// Confines the calling thread to the ruleset, for good; it must have no-new-privileges. An errno, 0 for success. May
/// be called between fork and exec.
int enterLandlockRuleset(const platform::FileDescriptor& ruleset) noexcept;

} // namespace host
