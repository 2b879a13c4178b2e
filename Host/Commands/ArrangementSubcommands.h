// The part of the command line that is about placed widgets: add, remove, edit, move, lock, unlock, mode, list,
// explain.
#pragma once

#include "Host/Commands/ArrangementCommands.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace host {

class ArrangementSubcommands {
  public:
    using Command = std::function<std::optional<Failure>()>;

    /// Adds the subcommands to `app`; the one that is given calls `choose` with what it does. Keeps what was parsed, so
    /// it must outlive both. `choice` is asked when the command runs.
    void addTo(CLI::App& app, std::function<void(Command)> choose, std::function<ExtensionChoice()> choice);

  private:
    void addAdd(CLI::App& app);
    void addRemove(CLI::App& app);
    void addEdit(CLI::App& app);
    void addMove(CLI::App& app);
    void addLooks(CLI::App& app);
    void addList(CLI::App& app);
    void addExplain(CLI::App& app);
    /// An instance's id, as a positional argument.
    void addId(CLI::App& command);
    void addOutput(CLI::App& command);
    Settings settings() const;
    std::optional<std::string> output() const;

    std::function<void(Command)> choose_;
    std::function<ExtensionChoice()> choice_;
    std::string kind_;
    std::string family_;
    std::vector<std::string> settings_;
    std::string output_;
    std::string at_;
    InstanceId id_ = 0;
    std::string x_;
    std::string y_;
    std::string mode_;
    bool json_ = false;
};

} // namespace host
