// The extension's process: started with nothing but what it is given, spoken to through pipes, and never left behind.
#pragma once

#include "Host/Connection/Confinement.h"
#include "Host/Connection/ExtensionEnvironment.h"
#include "Host/Connection/Manifest.h"
#include "Platform/Foundation/Expected.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace host {

class ExtensionProcess {
  public:
    /// Starts the manifest's executable, confined, in a session of its own. The error is one clear line.
    ///
    /// The child shares the host's memory until it becomes the extension, so that a large host starts one as quickly as
    /// a small one; the calling thread waits for it meanwhile, others go on.
    static platform::Expected<ExtensionProcess, std::string>
    start(const Manifest& manifest, ExtensionEnvironment environment, Confined confined = Confined::yes);

    ExtensionProcess(ExtensionProcess&& other) noexcept;
    ExtensionProcess& operator=(ExtensionProcess&&) = delete;
    ~ExtensionProcess();

    platform::FileDescriptor& input() { return input_; }
    platform::FileDescriptor& output() { return output_; }
    platform::FileDescriptor& errors() { return errors_; }
    const platform::FileDescriptor& input() const { return input_; }
    const platform::FileDescriptor& output() const { return output_; }
    const platform::FileDescriptor& errors() const { return errors_; }

    /// Whether a folder or file that the extension may read has appeared or been replaced since it was started: it does
    /// not see the new one, and should be ended and started anew before it is asked again.
    bool isStale() const { return confinement_ && confinement_->isStale(); }

    /// Whether the process gets half a second to leave by itself.
    enum class Patience { none, aMoment };
    /// Closes the pipes and kills the process if it does not leave by itself. Says how it ended: "exited with 1", "was
    /// killed by signal 9". Processes that it has started and left behind are killed, too.
    std::string end(Patience patience);

  private:
    ExtensionProcess(pid_t process, ExtensionEnvironment environment, std::optional<Confinement> confinement)
        : process_(process), environment_(std::move(environment)), confinement_(std::move(confinement)) {}

    pid_t process_;
    ExtensionEnvironment environment_;
    std::optional<Confinement> confinement_;
    platform::FileDescriptor input_;
    platform::FileDescriptor output_;
    platform::FileDescriptor errors_;
};

} // namespace host
