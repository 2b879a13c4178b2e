// The sandbox of an extension's process: prepared in the host, applied by the child between clone and exec.
//
// Its parts, in the order in which the child applies them:
// - limits, as far as the host's own are not lower: 1 GiB of private writable memory (64 threads' stacks are half of
//   that), 8 GiB of addresses (mapped files, threads' heaps), files of 64 MiB, 256 descriptors, no core files. An
//   allocation beyond them fails. Sanitized builds go without those of memory, since a sanitizer reserves terabytes.
// - no-new-privileges; as root, no capabilities either.
// - 96 processes and threads. The kernel counts these by user, so the extension gets a user namespace of its own. The
//   kernel does not count for root, and some systems deny namespaces: there the extension may have threads, but no
//   processes at all (a script then has only the shell's own commands).
// - Landlock for files, TCP, signals and abstract sockets (SandboxRules.h, Landlock.h).
// - a filter of system calls for what Landlock leaves open (SystemCallFilter.h).
//
// If the kernel lacks Landlock or filters, the other parts still apply. See `landlockVersion`.
//
// `prepare` does everything that allocates memory or opens files. `apply` only makes system calls that change the
// calling process, so that it may run in a child that shares the host's memory.
#pragma once

#include "Host/Connection/Landlock.h"
#include "Host/Connection/SandboxRules.h"

#include <linux/filter.h>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace host {

/// Whether there is a sandbox. `no` is for finding its faults and its cost.
enum class Confined { yes, no };

class Sandbox {
  public:
    /// Makes a sandbox for a kernel with that version of Landlock.
    static Sandbox prepare(const SandboxRules& rules, int landlock = landlockVersion());

    enum class Step { none, limits, privileges, userNamespace, files, systemCalls };
    /// The step that failed, and its errno; `Step::none` if none failed.
    struct Failure {
        Step step = Step::none;
        int error = 0;
    };

    /// Confines the calling process permanently. Async-signal-safe.
    Failure apply() const noexcept;

    /// Does without a user namespace. For systems that let one be made but not used, where `apply` fails at that step.
    void disableUserNamespace() { ownUserNamespace_ = false; }

    /// Whether a granted file or folder has appeared, been removed or been replaced since `prepare`. Rules bind to
    /// inodes, so the process cannot read the new one until it is restarted. Makes about fifty calls of stat.
    bool needsRestart() const;

  private:
    Sandbox(NetworkAccess network, int landlock) : ruleset_(network, landlock) {}

    /// Device and inode.
    using Identity = std::pair<dev_t, ino_t>;
    static Identity identityIn(const struct stat& status) { return {status.st_dev, status.st_ino}; }

    /// What was granted, and the file that was there.
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
    /// The namespace's one user and one group, in the format of /proc/self/uid_map.
    std::string userMap_;
    std::string groupMap_;
    bool filters_ = false;
    std::vector<sock_filter> filterAllowingProcesses_;
    std::vector<sock_filter> filterRefusingProcesses_;
};

} // namespace host
