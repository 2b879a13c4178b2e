#include "Host/Connection/SystemCallFilter.h"

#include <array>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <linux/audit.h>
#include <linux/sched.h>
#include <linux/seccomp.h>
#include <map>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace host {
namespace {

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
/// From here on the numbers are those of the x32 architecture, which shares the name of this one.
constexpr std::uint32_t numbersEnd = 0x40000000;
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
constexpr std::uint32_t numbersEnd = 0xffffffff;
#elif defined(__riscv) && __riscv_xlen == 64
constexpr std::uint32_t architecture = AUDIT_ARCH_RISCV64;
constexpr std::uint32_t numbersEnd = 0xffffffff;
#else
#error "Name this machine's AUDIT_ARCH here."
#endif
static_assert(std::endian::native == std::endian::little, "arguments are read by their lower half, which lies first");

using Program = std::vector<sock_filter>;

constexpr auto numberOffset = static_cast<std::uint32_t>(offsetof(seccomp_data, nr));
constexpr auto architectureOffset = static_cast<std::uint32_t>(offsetof(seccomp_data, arch));

constexpr std::uint32_t argumentOffset(std::uint32_t index) {
    return static_cast<std::uint32_t>(offsetof(seccomp_data, args)) + (index * 8);
}

constexpr sock_filter statement(std::uint32_t code, std::uint32_t value) {
    return {static_cast<std::uint16_t>(code), 0, 0, value};
}

constexpr sock_filter load(std::uint32_t offset) {
    return statement(BPF_LD | BPF_W | BPF_ABS, offset);
}

constexpr sock_filter refuse(int error) {
    return statement(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | (static_cast<std::uint32_t>(error) & SECCOMP_RET_DATA));
}

constexpr sock_filter allow() {
    return statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW);
}

void append(Program& program, const Program& more) {
    program.insert(program.end(), more.begin(), more.end());
}

/// Runs `body`, of at most 255 instructions, if `test` (BPF_JEQ, BPF_JGE, BPF_JSET) holds of the loaded value, and else
/// what follows.
void appendIf(Program& program, std::uint32_t test, std::uint32_t value, const Program& body) {
    program.push_back(
        {static_cast<std::uint16_t>(BPF_JMP | test | BPF_K), 0, static_cast<std::uint8_t>(body.size()), value});
    append(program, body);
}

Program socketRules(NetworkAccess network) {
    constexpr std::uint32_t typeMask = 0xf;
    Program rules{load(argumentOffset(0))};
    appendIf(rules, BPF_JEQ, AF_UNIX,
             {load(argumentOffset(1)),
              statement(BPF_ALU | BPF_AND | BPF_K, typeMask),
              {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, SOCK_DGRAM},
              allow(),
              refuse(EACCES)});
    if (network == NetworkAccess::connections) {
        for (const int family : {AF_INET, AF_INET6, AF_NETLINK}) {
            appendIf(rules, BPF_JEQ, static_cast<std::uint32_t>(family), {allow()});
        }
    }
    rules.push_back(refuse(EACCES));
    return rules;
}

Program cloneRules(NewProcesses processes) {
    constexpr std::uint32_t namespaces =
        CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;
    Program rules{load(argumentOffset(0))};
    appendIf(rules, BPF_JSET, namespaces, {refuse(EPERM)});
    if (processes == NewProcesses::refused) {
        appendIf(rules, BPF_JSET, CLONE_THREAD, {allow()});
        rules.push_back(refuse(EAGAIN));
    } else {
        rules.push_back(allow());
    }
    return rules;
}

/// Whatever is asked of them.
constexpr auto refusedCalls = std::to_array<long>({
    SYS_unshare,
    SYS_setns,
    SYS_io_uring_setup,
#ifndef __SANITIZE_ADDRESS__
    SYS_ptrace,
#endif
    SYS_process_vm_readv,
    SYS_process_vm_writev,
    SYS_pidfd_getfd,
    SYS_add_key,
    SYS_request_key,
    SYS_keyctl,
    SYS_bpf,
    SYS_perf_event_open,
    SYS_userfaultfd,
});

/// What becomes of each call that is not simply allowed, in the order of their numbers.
using Rules = std::map<std::uint32_t, Program>;

/// A search tree, since the kernel tries the program with each of its hundreds of calls when it is installed.
Program search(Rules::const_iterator first, Rules::const_iterator last) {
    Program program;
    const auto count = std::distance(first, last);
    if (count == 1) {
        appendIf(program, BPF_JEQ, first->first, first->second);
        program.push_back(allow());
        return program;
    }
    const auto middle = std::next(first, count / 2);
    appendIf(program, BPF_JGE, middle->first, search(middle, last));
    append(program, search(first, middle));
    return program;
}

} // namespace

std::vector<sock_filter> systemCallFilter(NetworkAccess network, NewProcesses processes) {
    Rules rules;
    const auto rule = [&](long call, Program body) {
        rules.emplace(static_cast<std::uint32_t>(call), std::move(body));
    };
    rule(SYS_socket, socketRules(network));
    rule(SYS_bind, {refuse(EACCES)});
    rule(SYS_listen, {refuse(EACCES)});
    rule(SYS_clone, cloneRules(processes));
    // Its flags lie in memory, where the filter cannot look; the C library takes clone instead.
    rule(SYS_clone3, {refuse(ENOSYS)});
#ifdef SYS_fork
    if (processes == NewProcesses::refused) {
        rule(SYS_fork, {refuse(EAGAIN)});
        rule(SYS_vfork, {refuse(EAGAIN)});
    }
#endif
    for (const long call : refusedCalls) {
        rule(call, {refuse(EPERM)});
    }
    Program program{load(architectureOffset), {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, architecture}, refuse(ENOSYS)};
    program.push_back(load(numberOffset));
    appendIf(program, BPF_JGE, numbersEnd, {refuse(ENOSYS)});
    append(program, search(rules.begin(), rules.end()));
    return program;
}

bool canFilterSystemCalls() {
    std::uint32_t action = SECCOMP_RET_ERRNO;
    return syscall(SYS_seccomp, SECCOMP_GET_ACTION_AVAIL, 0, &action) == 0;
}

int enterSystemCallFilter(const std::vector<sock_filter>& program) noexcept {
    // The kernel does not write to it.
    const sock_fprog described{static_cast<unsigned short>(program.size()), const_cast<sock_filter*>(program.data())};
    // Without the flag older kernels slow the whole process down against a fault of processors that does not concern
    // it.
    const auto flags = SECCOMP_FILTER_FLAG_SPEC_ALLOW;
    return syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, flags, &described) == 0 ? 0 : errno;
}

} // namespace host
