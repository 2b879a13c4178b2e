// The extension's process: started with nothing but what it is given, spoken to through pipes, and never left behind.
#pragma once

#include "Host/Connection/Confinement.h"
#include "Host/Connection/ExtensionEnvironment.h"
#include "Host/Connection/Manifest.h"
#include "Platform/Foundation/Expected.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace host {

/// A file descriptor that is closed with its owner.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { close(); }

    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    void close();
    int release();

  private:
    int number_;
};

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

    Descriptor& input() { return input_; }
    Descriptor& output() { return output_; }
    Descriptor& errors() { return errors_; }
    const Descriptor& input() const { return input_; }
    const Descriptor& output() const { return output_; }
    const Descriptor& errors() const { return errors_; }

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
    Descriptor input_;
    Descriptor output_;
    Descriptor errors_;
};

} // namespace host
