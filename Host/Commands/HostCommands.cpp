#include "Host/Commands/HostCommands.h"

#include "Host/Connection/UserFolders.h"
#include "Host/Session/HostApplication.h"
#include "Host/Session/RunningHost.h"

#include <fmt/format.h>

#include <cstdio>
#include <vector>

namespace host {
namespace {

using platform::Unexpected;

/// A host without windows: nobody looks.
class NoWindows final : public HostDisplay {
  public:
    void tileUpdated(const Tile& /*tile*/, TileUpdate /*update*/) override {}
};

std::optional<Failure> ask(const std::vector<std::string>& arguments) {
    const auto code = callRunningHost(arguments);
    if (!code) {
        const bool hasBus = code.error().reason == NoHost::Reason::noneRuns;
        return Failure{Failure::Kind::unavailable,
                       hasBus ? "no host runs in this session; start one with widgethost desktop"
                              : "there is no session bus to reach a host by"};
    }
    return saidAlready(*code);
}

} // namespace

std::optional<Failure> saidAlready(int code) {
    return code == 0 ? std::nullopt : std::optional(Failure{static_cast<Failure::Kind>(code), ""});
}

Outcome<std::filesystem::path> configurationFolder() {
    const auto folder = userConfigFolder();
    if (!folder.is_absolute()) {
        return Unexpected{Failure{Failure::Kind::unreadable, "neither XDG_CONFIG_HOME nor HOME is an absolute path"}};
    }
    return folder / "widgethost";
}

std::optional<Failure> runHost(const ExtensionChoice& choice) {
    NoWindows display;
    return runHost(choice, display, Presence::foreground);
}

std::optional<Failure> runHost(const ExtensionChoice& choice, HostDisplay& display, Presence presence) {
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
                 return ExtensionChannel::open(manifest, choice.home, choice.confined);
             },
         .display = display,
         .presence = presence,
         .timeouts = {}});
    return saidAlready(application.run());
}

std::optional<Failure> reloadTiles(const std::optional<std::string>& kind) {
    return kind ? ask({"reload", *kind}) : ask({"reload"});
}

std::optional<Failure> explainTile(InstanceId id) {
    return ask({"explain", std::to_string(id)});
}

void tellOfArrangement() {
    const auto code = callRunningHost({"sync"});
    if (!code && code.error().reason == NoHost::Reason::noBus) {
        fmt::print(stderr, "widgethost: there is no session bus; the arrangement's file alone was changed\n");
    }
}

} // namespace host
