// The extension's process, with pipes to its standard streams.
//
// The kernel kills it when the thread that started it ends, however that comes. What the extension itself has started
// is killed by this process alone, and outlives a host that is killed.
#pragma once

#include "Host/Connection/ExtensionEnvironment.h"
#include "Host/Connection/Manifest.h"
#include "Host/Connection/Sandbox.h"
#include "Platform/Foundation/Failure.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace host {

class ExtensionProcess {
  public:
    /// Starts the manifest's executable, confined, in a session of its own.
    ///
    /// The child shares the host's memory until it becomes the extension, so that a large host starts one as quickly as
    /// a small one; the calling thread waits for it meanwhile, others go on.
    static platform::Outcome<ExtensionProcess> start(const Manifest& manifest, ExtensionEnvironment environment,
                                                     Confined confined = Confined::yes);

    ExtensionProcess(ExtensionProcess&& other) noexcept;
    ExtensionProcess& operator=(ExtensionProcess&&) = delete;
    /// Closes the pipes, and waits for the end of a process that is not reaped: at most `Timeouts::shutdown`, then it
    /// is killed.
    ~ExtensionProcess();

    /// The host's ends of the extension's standard streams.
    platform::FileDescriptor input;
    platform::FileDescriptor output;
    platform::FileDescriptor errors;

    /// Whether a folder or file that the extension may read has appeared or been replaced since it was started: it does
    /// not see the new one, and should be ended and started anew before it is asked again.
    bool needsRestart() const { return sandbox_ && sandbox_->needsRestart(); }

    /// A descriptor that is readable once the process has ended.
    const platform::FileDescriptor& end() const { return end_; }

    /// Kills the process and those that it has started. Does not wait for its end.
    void kill() const;

    /// How the process ended ("exited with 1", "was killed by signal 9"), once; nothing while it runs. Does not wait.
    /// Kills the processes that it has left behind.
    std::optional<std::string> reap();

    bool isReaped() const { return process_ == 0; }

  private:
    ExtensionProcess(pid_t process, platform::FileDescriptor end, ExtensionEnvironment environment,
                     std::optional<Sandbox> sandbox)
        : process_(process), end_(std::move(end)), environment_(std::move(environment)), sandbox_(std::move(sandbox)) {}

    bool waitForEnd(std::chrono::milliseconds timeout) const;

    pid_t process_;
    platform::FileDescriptor end_;
    ExtensionEnvironment environment_;
    std::optional<Sandbox> sandbox_;
};

} // namespace host
