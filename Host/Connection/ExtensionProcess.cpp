#include "Host/Connection/ExtensionProcess.h"

#include "Host/Connection/Timeouts.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace host {
namespace {

using platform::FileDescriptor;
using platform::unavailable;
using platform::Unexpected;

struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;
};

std::optional<Pipe> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

std::string howItEnded(int status) {
    if (WIFSIGNALED(status)) {
        return fmt::format("was killed by signal {}", WTERMSIG(status));
    }
    return fmt::format("exited with {}", WEXITSTATUS(status));
}

/// The stack of the child until it executes the extension; sanitized frames are large.
using ChildStack = std::array<std::byte, std::size_t{256} << 10U>;

/// The child's arguments and its errors, in the memory that it shares with the host.
struct Start {
    const char* program = nullptr;
    char* const* arguments = nullptr;
    char* const* variables = nullptr;
    std::array<int, 3> descriptors{};
    pid_t host = 0;
    const Sandbox* sandbox = nullptr;
    Sandbox::Failure failure;
    int executing = 0;
};

/// Runs in the child until it executes the extension. Makes only system calls, since the locks that the host's other
/// threads hold stay locked here.
int becomeExtension(void* given) {
    Start& start = *static_cast<Start*>(given);
    setsid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != start.host) {
        // The host has died before the call of prctl.
        _exit(EXIT_FAILURE);
    }
    // Resets all signals to their defaults. They are blocked so far, so no handler of the host runs here.
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number) {
        sigaction(number, &standard, nullptr);
    }
    for (int number = 0; number < 3; ++number) {
        dup2(start.descriptors[static_cast<std::size_t>(number)], number);
    }
    if (start.sandbox != nullptr) {
        start.failure = start.sandbox->apply();
        if (start.failure.step != Sandbox::Step::none) {
            _exit(EXIT_FAILURE);
        }
    }
    close_range(STDERR_FILENO + 1, ~0U, 0);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execve(start.program, start.arguments, start.variables);
    start.executing = errno;
    _exit(EXIT_FAILURE);
}

struct Child {
    pid_t process = 0;
    /// Readable once the process has ended.
    FileDescriptor end;
};

/// Returns the extension's process, or the errno; `start` has the child's errors.
platform::Expected<Child, int> runChild(Start& start) {
    const auto stack = std::make_unique_for_overwrite<ChildStack>();
    // The host's signal handlers must not run in the child, which shares its memory.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    int end = -1;
    const pid_t process = clone(becomeExtension, stack->data() + stack->size(),
                                CLONE_VM | CLONE_VFORK | CLONE_PIDFD | SIGCHLD, &start, &end);
    const int error = process < 0 ? errno : 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (process < 0) {
        return Unexpected{error};
    }
    Child child{process, FileDescriptor(end)};
    if (start.failure.step != Sandbox::Step::none || start.executing != 0) {
        while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
        return Unexpected{start.executing != 0 ? start.executing : start.failure.error};
    }
    return child;
}

} // namespace

platform::Outcome<ExtensionProcess> ExtensionProcess::start(const Manifest& manifest, ExtensionEnvironment environment,
                                                            Confined confined) {
    auto input = makePipe();
    auto output = makePipe();
    auto errors = makePipe();
    if (!input || !output || !errors) {
        return unavailable(fmt::format("no pipe to the extension: {}", std::strerror(errno)));
    }
    std::optional<Sandbox> sandbox;
    if (confined == Confined::yes) {
        const auto interpreter = scriptInterpreter(manifest.executable);
        sandbox.emplace(Sandbox::prepare(sandboxRules(manifest, environment, interpreter)));
    }
    std::vector<char*> variables;
    for (std::string& variable : environment.variables) {
        variables.push_back(variable.data());
    }
    variables.push_back(nullptr);
    std::string program = manifest.executable.string();
    std::array<char*, 2> arguments{program.data(), nullptr};
    const Start start{.program = program.c_str(),
                      .arguments = arguments.data(),
                      .variables = variables.data(),
                      .descriptors = {input->reading.get(), output->writing.get(), errors->writing.get()},
                      .host = getpid(),
                      .sandbox = sandbox ? &*sandbox : nullptr};
    Start tried = start;
    auto child = runChild(tried);
    if (tried.failure.step == Sandbox::Step::userNamespace) {
        sandbox->disableUserNamespace();
        tried = start;
        child = runChild(tried);
    }
    if (!child) {
        const char* what = tried.failure.step == Sandbox::Step::none ? "start" : "confine";
        return unavailable(fmt::format("cannot {} the extension {}: {}", what, program, std::strerror(child.error())));
    }
    ExtensionProcess started(child->process, std::move(child->end), std::move(environment), std::move(sandbox));
    started.input = std::move(input->writing);
    started.output = std::move(output->reading);
    started.errors = std::move(errors->reading);
    return started;
}

ExtensionProcess::ExtensionProcess(ExtensionProcess&& other) noexcept
    : input(std::move(other.input)), output(std::move(other.output)), errors(std::move(other.errors)),
      process_(std::exchange(other.process_, 0)), end_(std::move(other.end_)),
      environment_(std::move(other.environment_)), sandbox_(std::move(other.sandbox_)) {}

ExtensionProcess::~ExtensionProcess() {
    if (isReaped()) {
        return;
    }
    input.close();
    output.close();
    constexpr auto timeout = Timeouts{}.shutdown;
    if (!waitForEnd(timeout)) {
        kill();
        // A process that waits in the kernel does not end at once.
        waitForEnd(timeout);
    }
    reap();
}

void ExtensionProcess::kill() const {
    if (!isReaped()) {
        ::kill(process_, SIGKILL);
        ::kill(-process_, SIGKILL);
    }
}

std::optional<std::string> ExtensionProcess::reap() {
    if (isReaped() || !waitForEnd({})) {
        return std::nullopt;
    }
    // Before waitpid, since the group's number may be used again afterwards.
    ::kill(-process_, SIGKILL);
    int status = 0;
    waitpid(std::exchange(process_, 0), &status, WNOHANG);
    return howItEnded(status);
}

bool ExtensionProcess::waitForEnd(std::chrono::milliseconds timeout) const {
    pollfd ended{end_.get(), POLLIN, 0};
    return poll(&ended, 1, static_cast<int>(timeout.count())) > 0;
}

} // namespace host
