// The extension's process: started with nothing but what it is given, spoken to through pipes, and never left behind.
#pragma once

#include "Host/Connection/ExtensionEnvironment.h"
#include "Host/Connection/Manifest.h"
#include "Platform/Foundation/Expected.h"

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
    /// Starts the manifest's executable in a session of its own. The error is one clear line.
    static platform::Expected<ExtensionProcess, std::string> start(const Manifest& manifest,
                                                                   ExtensionEnvironment environment);

    ExtensionProcess(ExtensionProcess&& other) noexcept;
    ExtensionProcess& operator=(ExtensionProcess&&) = delete;
    ~ExtensionProcess();

    Descriptor& input() { return input_; }
    Descriptor& output() { return output_; }
    Descriptor& errors() { return errors_; }
    const Descriptor& input() const { return input_; }
    const Descriptor& output() const { return output_; }
    const Descriptor& errors() const { return errors_; }

    /// Whether the process gets half a second to leave by itself.
    enum class Patience { none, aMoment };
    /// Closes the pipes and kills the process if it does not leave by itself. Says how it ended: "exited with 1", "was
    /// killed by signal 9".
    std::string end(Patience patience);

  private:
    ExtensionProcess(pid_t process, ExtensionEnvironment environment)
        : process_(process), environment_(std::move(environment)) {}

    pid_t process_;
    ExtensionEnvironment environment_;
    Descriptor input_;
    Descriptor output_;
    Descriptor errors_;
};

} // namespace host
