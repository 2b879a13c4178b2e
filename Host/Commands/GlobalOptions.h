// What the command lines of widgethost-commands and widgethost-desktop have in common: to people they are one,
// `widgethost`.
#pragma once

#include "Host/Commands/Extensions.h"

#include <optional>
#include <string>

namespace CLI {
class App;
} // namespace CLI

namespace host {

/// What stands before any command.
class GlobalOptions {
  public:
    /// Keeps what was parsed, so it must outlive `app`.
    void addTo(CLI::App& app);

    ExtensionChoice choice() const;

  private:
    std::optional<std::string> extension_;
    std::optional<std::string> home_;
    bool unconfined_ = false;
};

/// The command `desktop`; whether it is to be quiet goes to `background`.
CLI::App* addDesktopCommand(CLI::App& app, bool& background);

/// Parses; the exit code where the program ends with that, because help was asked for or something is wrong.
std::optional<int> parseArguments(CLI::App& app, int argc, char** argv);

/// Says on standard error what failed, if anything did and it is unsaid; answers the exit code.
int finish(const std::optional<Failure>& failure);

} // namespace host
