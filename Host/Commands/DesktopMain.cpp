// The host with windows. `widgethost desktop` becomes it; people do not start it themselves.
#include "Host/Commands/HostCommands.h"
#include "Host/Connection/UserFolders.h"
#include "Host/Desktop/Desktop.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>

int main(int argc, char** argv) {
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

    host::ExtensionChoice choice;
    if (!extension.empty()) {
        choice.extension = extension;
    }
    if (!home.empty()) {
        choice.home = home;
    }
    choice.confined = unconfined ? host::Confined::no : host::Confined::yes;
    const auto say = [](const host::Failure& failure) {
        if (!failure.message.empty()) {
            fmt::print(stderr, "widgethost: {}\n", failure.message);
        }
        return static_cast<int>(failure.code);
    };
    const auto presence = background ? host::Presence::background : host::Presence::foreground;
    auto desktop = host::Desktop::open({.readManifests = [choice] { return host::readManifests(choice); },
                                        .home = host::realHome(choice.home),
                                        .presence = presence});
    if (!desktop) {
        return say({host::ExitCode::unavailable, desktop.error()});
    }
    if (const auto failure = host::runHost(choice, **desktop, presence)) {
        return say(*failure);
    }
    if (const auto examples = (*desktop)->examplesWanted()) {
        choice.home = *examples;
        return say(host::becomeDesktop(choice, host::Presence::foreground));
    }
    return 0;
}
