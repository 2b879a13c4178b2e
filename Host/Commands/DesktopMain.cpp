// The host with windows. `widgethost desktop` becomes it; people do not start it themselves.
#include "Host/Commands/HostCommands.h"
#include "Host/Desktop/Desktop.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>

int main(int argc, char** argv) {
    CLI::App app{"Shows the placed widgets on the desktop; started by widgethost desktop", "widgethost-desktop"};
    std::string extension;
    std::string home;
    bool unconfined = false;
    app.add_option("--extension", extension, "As widgethost has it");
    app.add_option("--home", home, "As widgethost has it");
    app.add_flag("--unconfined", unconfined, "As widgethost has it");
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
    auto desktop = host::Desktop::open([choice] { return host::readManifests(choice); });
    if (!desktop) {
        return say({host::ExitCode::unavailable, desktop.error()});
    }
    const auto failure = host::runHost(choice, **desktop);
    return failure ? say(*failure) : 0;
}
