#include "Host/Connection/Sandbox.h"

#include "Host/Connection/SystemCallFilter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <linux/securebits.h>
#include <sched.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace host {
namespace {

constexpr rlim_t mebibyte = rlim_t{1} << 20U;
constexpr rlim_t maxPrivateMemory = 1024 * mebibyte;
constexpr rlim_t maxAddressSpace = 8192 * mebibyte;
constexpr rlim_t maxFile = 64 * mebibyte;
constexpr rlim_t maxDescriptors = 256;
constexpr rlim_t maxTasks = 96;

/// Returns an errno, 0 for success.
int writeWhole(const char* path, const std::string& text) noexcept {
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0) {
        return errno;
    }
    const ssize_t count = write(file, text.data(), text.size());
    const int error = count == static_cast<ssize_t>(text.size()) ? 0 : errno;
    close(file);
    return error;
}

} // namespace

Sandbox Sandbox::prepare(const SandboxRules& rules, int landlock) {
    Sandbox sandbox(rules.network, landlock);
    if (sandbox.ruleset_.isActive()) {
        for (const FileGrant& file : rules.files) {
            sandbox.grant(file);
        }
    }
    sandbox.limits_ = {
#ifndef __SANITIZE_ADDRESS__
        lowered(RLIMIT_DATA, maxPrivateMemory), lowered(RLIMIT_AS, maxAddressSpace),
#endif
        lowered(RLIMIT_FSIZE, maxFile), lowered(RLIMIT_NOFILE, maxDescriptors), lowered(RLIMIT_CORE, 0)};
    sandbox.processLimit_ = lowered(RLIMIT_NPROC, maxTasks);
    sandbox.isRoot_ = geteuid() == 0;
    sandbox.ownUserNamespace_ = !sandbox.isRoot_;
    sandbox.userMap_ = fmt::format("{0} {0} 1\n", geteuid());
    sandbox.groupMap_ = fmt::format("{0} {0} 1\n", getegid());
    sandbox.filters_ = canFilterSystemCalls();
    sandbox.filterAllowingProcesses_ = systemCallFilter(rules.network, NewProcesses::allowed);
    sandbox.filterRefusingProcesses_ = systemCallFilter(rules.network, NewProcesses::refused);
    return sandbox;
}

Sandbox::Failure Sandbox::apply() const noexcept {
    for (const Limit& limit : limits_) {
        if (setrlimit(static_cast<__rlimit_resource>(limit.resource), &limit.value) != 0) {
            return {Step::limits, errno};
        }
    }
    // The executed program does not get root's capabilities.
    if ((isRoot_ && prctl(PR_SET_SECUREBITS, SECBIT_NOROOT | SECBIT_NOROOT_LOCKED) != 0 && errno != EPERM) ||
        prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        return {Step::privileges, errno};
    }
    const bool counted = ownUserNamespace_ && unshare(CLONE_NEWUSER) == 0;
    if (counted) {
        if (const Failure failure = enterUserNamespace(); failure.step != Step::none) {
            return failure;
        }
    }
    if (ruleset_.isActive()) {
        if (const int error = ruleset_.apply(); error != 0) {
            return {Step::files, error};
        }
    }
    if (filters_) {
        if (const int error = applySystemCallFilter(counted ? filterAllowingProcesses_ : filterRefusingProcesses_);
            error != 0) {
            return {Step::systemCalls, error};
        }
    }
    return {};
}

Sandbox::Failure Sandbox::enterUserNamespace() const noexcept {
    int error = writeWhole("/proc/self/uid_map", userMap_);
    if (error == 0) {
        // Required before an ordinary user may map a group.
        error = writeWhole("/proc/self/setgroups", "deny");
    }
    if (error == 0) {
        error = writeWhole("/proc/self/gid_map", groupMap_);
    }
    if (error == 0 && setrlimit(RLIMIT_NPROC, &processLimit_.value) != 0) {
        error = errno;
    }
    return {error == 0 ? Step::none : Step::userNamespace, error};
}

void Sandbox::grant(const FileGrant& file) {
    std::optional<Identity> identity;
    const platform::FileDescriptor opened(open(file.path.c_str(), O_PATH | O_CLOEXEC));
    struct stat status {};
    if (opened.isOpen() && fstat(opened.get(), &status) == 0) {
        using Kind = LandlockRuleset::FileKind;
        ruleset_.grant(opened, S_ISDIR(status.st_mode) ? Kind::folder : Kind::other, file.access);
        identity = identityIn(status);
    }
    granted_.push_back({file.path, identity});
}

bool Sandbox::needsRestart() const {
    return std::any_of(granted_.begin(), granted_.end(), [](const Granted& each) {
        struct stat status {};
        const bool exists = stat(each.path.c_str(), &status) == 0;
        return exists ? each.identity != identityIn(status) : each.identity.has_value();
    });
}

Sandbox::Limit Sandbox::lowered(int resource, rlim_t max) {
    rlimit now{};
    getrlimit(static_cast<__rlimit_resource>(resource), &now);
    return {resource, {std::min(now.rlim_cur, max), std::min(now.rlim_max, max)}};
}

} // namespace host
