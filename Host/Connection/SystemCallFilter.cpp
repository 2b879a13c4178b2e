#include "Host/Connection/SystemCallFilter.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/Releaser.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <initializer_list>
#include <linux/sched.h>
#include <linux/seccomp.h>
#include <map>
#include <memory>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace host {
namespace {

/// Refused with any arguments.
constexpr auto refusedCalls = std::to_array<int>({
    SCMP_SYS(unshare),
    SCMP_SYS(setns),
    SCMP_SYS(io_uring_setup),
#ifndef __SANITIZE_ADDRESS__
    SCMP_SYS(ptrace),
#endif
    SCMP_SYS(process_vm_readv),
    SCMP_SYS(process_vm_writev),
    SCMP_SYS(pidfd_getfd),
    SCMP_SYS(add_key),
    SCMP_SYS(request_key),
    SCMP_SYS(keyctl),
    SCMP_SYS(bpf),
    SCMP_SYS(perf_event_open),
    SCMP_SYS(userfaultfd),
});

/// A comparison of the call's argument number `index`. libseccomp's macros for these are C.
scmp_arg_cmp argument(unsigned index, scmp_compare comparison, std::uint64_t a, std::uint64_t b = 0) {
    return {.arg = index, .op = comparison, .datum_a = a, .datum_b = b};
}

/// A filter that allows all calls but the refused ones.
class Filter {
  public:
    /// Refuses the call if all comparisons are true.
    void refuse(int error, int call, std::initializer_list<scmp_arg_cmp> arguments = {}) {
        const std::vector<scmp_arg_cmp> all(arguments);
        isComplete_ = seccomp_rule_add_array(filter_.get(), SCMP_ACT_ERRNO(static_cast<unsigned>(error)), call,
                                             static_cast<unsigned>(all.size()), all.data()) == 0 &&
                      isComplete_;
    }

    /// Returns an empty program on failure.
    std::vector<sock_filter> program() const {
        const platform::FileDescriptor file(memfd_create("filter", MFD_CLOEXEC));
        if (!isComplete_ || seccomp_export_bpf(filter_.get(), file.get()) != 0) {
            return {};
        }
        const off_t size = lseek(file.get(), 0, SEEK_END);
        std::vector<sock_filter> program(static_cast<std::size_t>(size) / sizeof(sock_filter));
        return pread(file.get(), program.data(), static_cast<std::size_t>(size), 0) == size
                   ? program
                   : std::vector<sock_filter>();
    }

  private:
    static scmp_filter_ctx make() {
        scmp_filter_ctx filter = seccomp_init(SCMP_ACT_ALLOW);
        seccomp_attr_set(filter, SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_ERRNO(ENOSYS));
        // A search tree, since the kernel runs the program for each of its hundreds of calls when it is installed.
        seccomp_attr_set(filter, SCMP_FLTATR_CTL_OPTIMIZE, 2);
        return filter;
    }

    std::unique_ptr<void, platform::Releaser<seccomp_release>> filter_{make()};
    bool isComplete_ = filter_ != nullptr;
};

void refuseSockets(Filter& filter, NetworkAccess network) {
    const auto isAllowed = [network](int family) {
        return family == AF_UNIX || (network == NetworkAccess::connections &&
                                     (family == AF_INET || family == AF_INET6 || family == AF_NETLINK));
    };
    // "Greater" also covers the upper half of the argument, which the kernel ignores.
    for (int family = 0; family <= AF_NETLINK; ++family) {
        if (!isAllowed(family)) {
            filter.refuse(EACCES, SCMP_SYS(socket), {argument(0, SCMP_CMP_EQ, static_cast<unsigned>(family))});
        }
    }
    filter.refuse(EACCES, SCMP_SYS(socket), {argument(0, SCMP_CMP_GT, AF_NETLINK)});
    constexpr unsigned typeMask = 0xf;
    for (unsigned type = 0; type <= typeMask; ++type) {
        if (type != SOCK_DGRAM) {
            filter.refuse(EACCES, SCMP_SYS(socket),
                          {argument(0, SCMP_CMP_EQ, AF_UNIX), argument(1, SCMP_CMP_MASKED_EQ, typeMask, type)});
        }
    }
    filter.refuse(EACCES, SCMP_SYS(bind));
    filter.refuse(EACCES, SCMP_SYS(listen));
}

void refuseProcesses(Filter& filter, NewProcesses processes) {
    for (const auto made : std::to_array<unsigned>(
             {CLONE_NEWNS, CLONE_NEWCGROUP, CLONE_NEWUTS, CLONE_NEWIPC, CLONE_NEWUSER, CLONE_NEWPID, CLONE_NEWNET})) {
        filter.refuse(EPERM, SCMP_SYS(clone), {argument(0, SCMP_CMP_MASKED_EQ, made, made)});
    }
    // Its flags are in memory, which a filter cannot read. The C library then uses clone.
    filter.refuse(ENOSYS, SCMP_SYS(clone3));
    if (processes == NewProcesses::refused) {
        filter.refuse(EAGAIN, SCMP_SYS(clone), {argument(0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0)});
#ifdef SYS_fork
        filter.refuse(EAGAIN, SCMP_SYS(fork));
        filter.refuse(EAGAIN, SCMP_SYS(vfork));
#endif
    }
}

} // namespace

const std::vector<sock_filter>& systemCallFilter(NetworkAccess network, NewProcesses processes) {
    // Each takes 60 µs, and a host starts extensions again and again.
    static std::map<std::pair<NetworkAccess, NewProcesses>, std::vector<sock_filter>> programs;
    std::vector<sock_filter>& program = programs[{network, processes}];
    if (program.empty()) {
        Filter filter;
        refuseSockets(filter, network);
        refuseProcesses(filter, processes);
        for (const int call : refusedCalls) {
            filter.refuse(EPERM, call);
        }
        program = filter.program();
    }
    return program;
}

bool canFilterSystemCalls() {
    std::uint32_t action = SECCOMP_RET_ERRNO;
    return syscall(SYS_seccomp, SECCOMP_GET_ACTION_AVAIL, 0, &action) == 0;
}

int applySystemCallFilter(const std::vector<sock_filter>& program) noexcept {
    // The kernel does not write to it.
    const sock_fprog described{static_cast<unsigned short>(program.size()), const_cast<sock_filter*>(program.data())};
    // Without the flag, older kernels slow the whole process down because of speculative execution.
    const auto flags = SECCOMP_FILTER_FLAG_SPEC_ALLOW;
    return syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, flags, &described) == 0 ? 0 : errno;
}

} // namespace host
