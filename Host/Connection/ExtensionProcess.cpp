#include "Host/Connection/ExtensionProcess.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace host {
namespace {

using platform::Unexpected;

/// How long a process may take to leave when its input has ended.
constexpr int graceMilliseconds = 500;

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

std::optional<Pipe> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    return Pipe{Descriptor(ends[0]), Descriptor(ends[1])};
}

/// Waits until the process has ended or the time is over; false if it still runs.
bool waitForEnd(pid_t process, int milliseconds) {
    const Descriptor watched(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    if (!watched.isOpen()) {
        return true;
    }
    pollfd ended{watched.number(), POLLIN, 0};
    return poll(&ended, 1, milliseconds) > 0;
}

std::string howItEnded(int status) {
    if (WIFSIGNALED(status)) {
        return fmt::format("was killed by signal {}", WTERMSIG(status));
    }
    return fmt::format("exited with {}", WEXITSTATUS(status));
}

/// What the child is to be like: a session of its own, default signals, three descriptors and no more.
class SpawnSettings {
  public:
    SpawnSettings(int input, int output, int errors) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, errors, STDERR_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    const posix_spawn_file_actions_t* actions() const { return &actions_; }
    const posix_spawnattr_t* attributes() const { return &attributes_; }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

} // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        close();
        number_ = other.release();
    }
    return *this;
}

void Descriptor::close() {
    if (isOpen()) {
        ::close(release());
    }
}

int Descriptor::release() {
    return std::exchange(number_, -1);
}

platform::Expected<ExtensionProcess, std::string> ExtensionProcess::start(const Manifest& manifest,
                                                                          ExtensionEnvironment environment) {
    auto input = makePipe();
    auto output = makePipe();
    auto errors = makePipe();
    if (!input || !output || !errors) {
        return Unexpected{fmt::format("no pipe to the extension: {}", std::strerror(errno))};
    }
    std::vector<char*> variables;
    for (std::string& variable : environment.variables) {
        variables.push_back(variable.data());
    }
    variables.push_back(nullptr);
    std::string program = manifest.executable.string();
    std::array<char*, 2> arguments{program.data(), nullptr};
    const SpawnSettings settings(input->reading.number(), output->writing.number(), errors->writing.number());
    pid_t process = 0;
    const int failure = posix_spawn(&process, program.c_str(), settings.actions(), settings.attributes(),
                                    arguments.data(), variables.data());
    if (failure != 0) {
        return Unexpected{fmt::format("cannot start the extension {}: {}", program, std::strerror(failure))};
    }
    ExtensionProcess started(process, std::move(environment));
    started.input_ = std::move(input->writing);
    started.output_ = std::move(output->reading);
    started.errors_ = std::move(errors->reading);
    return started;
}

ExtensionProcess::ExtensionProcess(ExtensionProcess&& other) noexcept
    : process_(std::exchange(other.process_, 0)), environment_(std::move(other.environment_)),
      input_(std::move(other.input_)), output_(std::move(other.output_)), errors_(std::move(other.errors_)) {}

ExtensionProcess::~ExtensionProcess() {
    end(Patience::aMoment);
}

std::string ExtensionProcess::end(Patience patience) {
    if (process_ <= 0) {
        return "has ended";
    }
    input_.close();
    output_.close();
    if (!waitForEnd(process_, patience == Patience::none ? 0 : graceMilliseconds)) {
        kill(process_, SIGKILL);
    }
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = 0;
    return howItEnded(status);
}

} // namespace host
