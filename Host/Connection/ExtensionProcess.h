// The extension's process, with pipes to its standard streams.
//
// The kernel kills it when the thread that started it ends, even if that is killed. This does not apply to processes
// that the extension has started: only `kill`, `reap` and the destructor kill those.
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
    /// The child shares the host's memory until it executes the extension, so that the host's size does not slow it
    /// down. The calling thread blocks until then.
    static platform::Outcome<ExtensionProcess> start(const Manifest& manifest, ExtensionEnvironment environment,
                                                     Confined confined = Confined::yes);

    ExtensionProcess(ExtensionProcess&& other) noexcept;
    ExtensionProcess& operator=(ExtensionProcess&&) = delete;
    /// Closes the pipes. Waits for a process that is not reaped, and kills it after `Timeouts::shutdown`.
    ~ExtensionProcess();

    /// The host's ends of the extension's standard streams.
    platform::FileDescriptor input;
    platform::FileDescriptor output;
    platform::FileDescriptor errors;

    /// As `Sandbox::needsRestart`.
    bool needsRestart() const { return sandbox_ && sandbox_->needsRestart(); }

    /// A descriptor that is readable once the process has ended.
    const platform::FileDescriptor& end() const { return end_; }

    /// Kills the process and those that it has started. Does not block.
    void kill() const;

    /// Returns how the process ended ("exited with 1", "was killed by signal 9"), once; nothing while it runs. Does not
    /// block. Kills the processes that it has left behind.
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
