#include "Host/Commands/DesktopCommandLine.h"

#include "Host/Commands/HostCommands.h"
#include "Host/Connection/UserFolders.h"
#include "Host/Desktop/Desktop.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>

namespace host {

int runDesktopCommandLine(int argc, char** argv) {
    CLI::App app{"Shows the placed widgets on the desktop; started by widgethost desktop", "widgethost-desktop"};
    std::string extension;
    std::string home;
    bool unconfined = false;
    bool background = false;
    app.add_option("--extension", extension, "As widgethost has it");
    app.add_option("--home", home, "As widgethost has it");
    app.add_flag("--unconfined", unconfined, "As widgethost has it");
    app.add_flag("--background", background, "As widgethost desktop has it");
    CLI11_PARSE(app, argc, argv);

    ExtensionChoice choice;
    if (!extension.empty()) {
        choice.extension = extension;
    }
    if (!home.empty()) {
        choice.home = home;
    }
    choice.confined = unconfined ? Confined::no : Confined::yes;
    const auto say = [](const Failure& failure) {
        if (!failure.message.empty()) {
            fmt::print(stderr, "widgethost: {}\n", failure.message);
        }
        return static_cast<int>(failure.code);
    };
    const auto presence = background ? Presence::background : Presence::foreground;
    auto desktop = Desktop::open({.readManifests = [choice] { return readManifests(choice); },
                                  .home = realHome(choice.home),
                                  .presence = presence});
    if (!desktop) {
        return say({ExitCode::unavailable, desktop.error()});
    }
    if (const auto failure = runHost(choice, **desktop, presence)) {
        return say(*failure);
    }
    if (const auto examples = (*desktop)->examplesWanted()) {
        choice.home = *examples;
        return say(becomeDesktop(choice, Presence::foreground));
    }
    return 0;
}

} // namespace host
