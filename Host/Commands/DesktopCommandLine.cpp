#include "Host/Commands/DesktopCommandLine.h"

#include "Host/Commands/GlobalOptions.h"
#include "Host/Commands/HostCommands.h"
#include "Host/Connection/UserFolders.h"
#include "Host/Desktop/Desktop.h"
#include "Platform/Foundation/ProgramFolder.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace host {
namespace {

/// Starts over with another home. Comes back only on failure.
Failure becomeDesktopOf(const std::string& home, const ExtensionChoice& choice) {
    std::vector<std::string> words{"widgethost", "--home", home};
    if (choice.extension) {
        words.insert(words.end(), {"--extension", *choice.extension});
    }
    if (choice.confined == Confined::no) {
        words.emplace_back("--unconfined");
    }
    words.emplace_back("desktop");
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    execv((platform::programFolder() + "/widgethost-desktop").c_str(), arguments.data());
    return {Failure::Kind::unavailable, fmt::format("cannot start again: {}", std::strerror(errno))};
}

} // namespace

int runDesktopCommandLine(int argc, char** argv) {
    CLI::App app{"Shows the desktop widgets of extensions", "widgethost"};
    GlobalOptions options;
    options.addTo(app);
    bool background = false;
    addDesktopCommand(app, background);
    if (const auto code = parseArguments(app, argc, argv)) {
        return *code;
    }

    const ExtensionChoice choice = options.choice();
    const auto presence = background ? Presence::background : Presence::foreground;
    auto desktop = Desktop::open({.readManifests = [choice] { return readManifests(choice); },
                                  .home = realHome(choice.home),
                                  .presence = presence});
    if (!desktop) {
        const int code = finish(Failure{Failure::Kind::unavailable, desktop.error()});
        // As for a display that was lost: a supervisor tries again until it is back.
        return background ? EXIT_FAILURE : code;
    }
    if (const auto failure = runHost(choice, **desktop, presence)) {
        return finish(failure);
    }
    if (const auto examples = (*desktop)->examplesWanted()) {
        return finish(becomeDesktopOf(*examples, choice));
    }
    return finish(std::nullopt);
}

} // namespace host
