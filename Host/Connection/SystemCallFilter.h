// Which system calls an extension's process may make: a program that the kernel runs before each (seccomp).
//
// Landlock watches files and TCP; the filter has what that leaves open, and holds on kernels without it:
// - sockets: of the local kind datagrams alone, which reach the system's log but neither the session's bus nor the
//   display; internet and netlink sockets only with network access; all others never. Nothing is listened on or bound.
// - other processes' memory and descriptors, and the user's keys.
// - the ways round these rules: io_uring, namespaces of its own, system calls of other architectures.
// - new processes, where they cannot be counted otherwise. Threads are always allowed.
// What is refused gets an error, never a signal: a library that only tries goes on.
#pragma once

#include "Host/Connection/SandboxRules.h"

#include <linux/filter.h>
#include <vector>

namespace host {

enum class NewProcesses { allowed, refused };

/// The program, for this machine's architecture; empty if it cannot be made.
std::vector<sock_filter> systemCallFilter(NetworkAccess network, NewProcesses processes);

/// Whether the kernel takes such programs.
bool canFilterSystemCalls();

/// Applies the program to the calling thread, for good. Requires no-new-privileges. Returns an errno, 0 for success.
/// Async-signal-safe.
int applySystemCallFilter(const std::vector<sock_filter>& program) noexcept;

} // namespace host
