#include "Host/Commands/GlobalOptions.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>

namespace host {

void GlobalOptions::addTo(CLI::App& app) {
    app.require_subcommand(0, 1);
    app.fallthrough();
    app.set_version_flag("--version", "widgethost " WIDGETHOST_VERSION);
    app.add_option("--extension", extension_, "An extension's manifest or executable, instead of the installed ones")
        ->type_name("PATH");
    app.add_option("--home", home_, "The folder that the extension takes for the user's home")
        ->type_name("FOLDER")
        ->check(CLI::ExistingDirectory);
    app.add_flag("--unconfined", unconfined_,
                 "Let the extension do what the user may; for finding out whether confinement is at fault");
}

ExtensionChoice GlobalOptions::choice() const {
    return {.extension = extension_, .home = home_, .confined = unconfined_ ? Confined::no : Confined::yes};
}

CLI::App* addDesktopCommand(CLI::App& app, bool& background) {
    CLI::App* showing = app.add_subcommand("desktop", "Show the placed widgets on the desktop, until told to end; "
                                                      "what widgethost alone does where there is a display");
    showing->add_flag("--background", background,
                      "Keep quiet where no widget is placed, or a host runs already; for the start of a session");
    return showing;
}

std::optional<int> parseArguments(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);
    } catch (const CLI::ParseError& error) {
        return finish(Failure{Failure::Kind::usage, fmt::format("{} (see widgethost --help)", error.what())});
    }
    return std::nullopt;
}

int finish(const std::optional<Failure>& failure) {
    if (failure && !failure->message.empty()) {
        fmt::print(stderr, "widgethost: {}\n", failure->message);
    }
    return platform::exitCode(failure);
}

} // namespace host
