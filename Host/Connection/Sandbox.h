// The sandbox of an extension's process: prepared in the host, applied by the child between clone and exec.
//
// What it is made of, in the order in which the child applies it:
// - limits, as far as the host's own are not lower: 1 GiB of private writable memory (64 threads' stacks are half of
//   that), 8 GiB of addresses (mapped files, threads' heaps), files of 64 MiB, 256 descriptors, no core files. An
//   allocation beyond them fails. Sanitized builds go without those of memory, since a sanitizer reserves terabytes.
// - no-new-privileges; as root, no capabilities either.
// - 96 processes and threads. The kernel counts these by user, so the extension gets a user namespace of its own, where
//   it alone is counted. The kernel does not count for root, and some systems give no namespaces: there the extension
//   may have threads, but no processes at all (a script then has no commands but the shell's own).
// - Landlock for files, TCP, signals and abstract sockets (SandboxRules.h, Landlock.h).
// - a filter of system calls for what Landlock leaves open (SystemCallFilter.h).
//
// Where the kernel has no Landlock or no filters, the rest holds; `landlockVersion` says whether it has.
//
// Everything that allocates, opens or may fail slowly happens in `prepare`; `apply` makes system calls only, and
// changes nothing but the calling process, so that it may run in a child that shares the host's memory.
#pragma once

#include "Host/Connection/Landlock.h"
#include "Host/Connection/SandboxRules.h"

#include <linux/filter.h>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>

namespace host {

/// Whether there is a sandbox. Without one it can be found out whether it is at fault, and what it costs.
enum class Confined { yes, no };

class Sandbox {
  public:
    /// For a kernel with Landlock of that version.
    static Sandbox prepare(const SandboxRules& rules, int landlock = landlockVersion());

    enum class Step { none, limits, privileges, userNamespace, files, systemCalls };
    /// At which step it went wrong, and the errno; `Step::none` if nothing did.
    struct Failure {
        Step step = Step::none;
        int error = 0;
    };

    /// Confines the calling process, for good. Async-signal-safe.
    Failure apply() const noexcept;

    /// Goes on without a user namespace, where `apply` failed at that step: a system may let one be made, but not used.
    void disableUserNamespace() { ownUserNamespace_ = false; }

    /// Whether a granted file or folder has appeared, gone or been replaced since `prepare`: rules bind to inodes, so
    /// the process does not see the new one, and should be started anew before it is asked again. Takes some fifty
    /// calls of stat.
    bool needsRestart() const;

  private:
    Sandbox(NetworkAccess network, int landlock) : ruleset_(network, landlock) {}

    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;
        bool operator==(const Identity&) const = default;
    };
    static Identity identityIn(const struct stat& status) { return {status.st_dev, status.st_ino}; }

    /// What was granted, and what stood there then.
    struct Granted {
        std::string path;
        std::optional<Identity> identity;
    };
    void grant(const FileGrant& file);

    struct Limit {
        int resource = 0;
        rlimit value{};
    };
    static Limit lowered(int resource, rlim_t max);

    Failure enterUserNamespace() const noexcept;

    LandlockRuleset ruleset_;
    std::vector<Granted> granted_;
    std::vector<Limit> limits_;
    Limit processLimit_;
    bool isRoot_ = false;
    bool ownUserNamespace_ = false;
    /// The namespace's one user and one group, as /proc/self/uid_map wants them.
    std::string userMap_;
    std::string groupMap_;
    bool filters_ = false;
    std::vector<sock_filter> filterAllowingProcesses_;
    std::vector<sock_filter> filterRefusingProcesses_;
};

} // namespace host
