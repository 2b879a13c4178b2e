// The system calls that an extension's process may make: a seccomp program, which the kernel runs before each call.
//
// Landlock restricts files and TCP. The filter refuses what that leaves open, also on kernels without it:
// - sockets, except for local datagrams, which reach the system's log but neither the session's bus nor the display;
//   and, with network access, internet and netlink sockets. `bind` and `listen` are refused.
// - access to other processes' memory and descriptors, and to the user's keys.
// - ways round these rules: io_uring, namespaces, system calls of other architectures.
// - new processes, if they cannot be counted otherwise. Threads are always allowed.
// A refused call fails with an error. It raises no signal, since libraries may only try it.
#pragma once

#include "Host/Connection/SandboxRules.h"

#include <linux/filter.h>
#include <vector>

namespace host {

enum class NewProcesses { allowed, refused };

/// Returns the program for this machine's architecture, made at the first call; empty on failure. Called on one thread.
const std::vector<sock_filter>& systemCallFilter(NetworkAccess network, NewProcesses processes);

/// Whether the kernel supports such programs.
bool canFilterSystemCalls();

/// Applies the program to the calling thread permanently. Requires no-new-privileges. Returns an errno, 0 for success.
/// Async-signal-safe.
int applySystemCallFilter(const std::vector<sock_filter>& program) noexcept;

} // namespace host
