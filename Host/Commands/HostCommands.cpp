#include "Host/Commands/HostCommands.h"

#include "Host/Connection/UserFolders.h"
#include "Host/Desktop/Desktop.h"
#include "Host/Session/HostApplication.h"
#include "Host/Session/RunningHost.h"
#include "Platform/Foundation/ProgramFolder.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace host {
namespace {

using platform::Unexpected;

/// The display of a host without windows.
class NoWindows final : public HostDisplay {
  public:
    void tileUpdated(const Tile& /*tile*/, TileUpdate /*update*/) override {}
};

std::optional<Failure> runOn(HostDisplay& display, const ExtensionChoice& choice, Presence presence) {
    const auto folder = configurationFolder();
    if (!folder) {
        return folder.error();
    }
    HostApplication application(
        {.arrangementFolder = *folder,
         .home = realHome(choice.home),
         .findManifest = [choice](const std::string& identifier) { return manifestNamed(identifier, choice); },
         .startExtension =
             [choice](const Manifest& manifest) {
                 return ExtensionClient::start(manifest, choice.home, choice.confined);
             },
         .display = display,
         .presence = presence});
    return alreadyReported(application.run());
}

/// Replaces this process by one with another home. Returns only on failure.
Failure restartWithHome(const std::string& home, const ExtensionChoice& choice) {
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
    execv((platform::programFolder() + "/widgethost").c_str(), arguments.data());
    return {Failure::Kind::unavailable, fmt::format("cannot restart: {}", std::strerror(errno))};
}

} // namespace

std::optional<Failure> alreadyReported(int exitCode) {
    return exitCode == 0 ? std::nullopt : std::optional(Failure{static_cast<Failure::Kind>(exitCode), ""});
}

Outcome<std::filesystem::path> configurationFolder() {
    const auto folder = userConfigFolder();
    if (!folder.is_absolute()) {
        return Unexpected{Failure{Failure::Kind::unreadable, "neither XDG_CONFIG_HOME nor HOME is an absolute path"}};
    }
    return folder / "widgethost";
}

std::optional<Failure> showDesktop(const ExtensionChoice& choice, Presence presence) {
    auto desktop = Desktop::open({.readManifests = [choice] { return readManifests(choice); },
                                  .home = realHome(choice.home),
                                  .presence = presence});
    if (!desktop) {
        Failure failure{Failure::Kind::unavailable, desktop.error()};
        if (presence == Presence::background) {
            // As after the loss of the display: systemd restarts the host until there is one.
            failure.kind = static_cast<Failure::Kind>(EXIT_FAILURE);
        }
        return failure;
    }
    if (auto failure = runOn(**desktop, choice, presence)) {
        return failure;
    }
    const auto home = (*desktop)->homeWanted();
    return home ? std::optional(restartWithHome(*home, choice)) : std::nullopt;
}

std::optional<Failure> runHost(const ExtensionChoice& choice) {
    NoWindows display;
    return runOn(display, choice, Presence::foreground);
}

std::optional<Failure> askHost(const std::vector<std::string>& arguments) {
    const auto code = callRunningHost(arguments);
    if (!code) {
        const bool hasBus = code.error() == NoHost::noneRuns;
        return Failure{Failure::Kind::unavailable,
                       hasBus ? "no host is running in this session; start one with widgethost desktop"
                              : "the host cannot be reached: there is no session bus"};
    }
    return alreadyReported(*code);
}

void notifyHost() {
    const auto code = callRunningHost({"sync"});
    if (!code && code.error() == NoHost::noBus) {
        fmt::print(stderr, "widgethost: there is no session bus; only the arrangement file was changed\n");
    }
}

} // namespace host
