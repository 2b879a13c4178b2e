#include "Host/Commands/HostCommands.h"

#include "Host/Connection/UserFolders.h"
#include "Host/Session/HostApplication.h"
#include "Host/Session/RunningHost.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace host {
namespace {

using platform::Unexpected;

/// A host without windows: nobody looks.
class NoWindows final : public HostDisplay {
  public:
    void tileChanged(const Tile& /*tile*/) override {}
    void tileReloaded(const Tile& /*tile*/) override {}
};

/// What the running host has said already, as an exit code.
std::optional<Failure> saidAlready(int code) {
    return code == 0 ? std::nullopt : std::optional(Failure{static_cast<ExitCode>(code), ""});
}

std::optional<Failure> ask(const std::vector<std::string>& arguments) {
    const auto code = callRunningHost(arguments);
    if (!code) {
        const bool hasBus = code.error().reason == NoHost::Reason::noneRuns;
        return Failure{ExitCode::unavailable, hasBus ? "no host runs in this session; start one with widgethost desktop"
                                                     : "there is no session bus to reach a host by"};
    }
    return saidAlready(*code);
}

} // namespace

Outcome<std::filesystem::path> configurationFolder() {
    const auto folder = userConfigFolder();
    if (!folder.is_absolute()) {
        return Unexpected{Failure{ExitCode::configuration, "neither XDG_CONFIG_HOME nor HOME is an absolute path"}};
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
         .findManifest = [choice](const std::string& identifier) { return manifestNamed(identifier, choice); },
         .startExtension =
             [choice](const Manifest& manifest) {
                 return ExtensionChannel::open(manifest, choice.home, choice.confined);
             },
         .display = display,
         .presence = presence,
         .patience = {}});
    return saidAlready(application.run());
}

bool hasDisplay() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here sets variables
    const auto isSet = [](const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return isSet("WAYLAND_DISPLAY") || isSet("DISPLAY");
}

Failure becomeDesktop(const ExtensionChoice& choice, Presence presence) {
    std::vector<std::string> words{"widgethost-desktop"};
    const auto add = [&](const char* option, const std::optional<std::filesystem::path>& path) {
        if (path) {
            words.insert(words.end(), {option, path->string()});
        }
    };
    add("--extension", choice.extension);
    add("--home", choice.home);
    if (choice.confined == Confined::no) {
        words.emplace_back("--unconfined");
    }
    if (presence == Presence::background) {
        words.emplace_back("--background");
    }
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    std::error_code failure;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", failure).parent_path();
    // Beside this program where both were built, else where it was installed.
    for (const auto& program : {folder / words.front(), folder / WIDGETHOST_LIBEXEC / words.front()}) {
        execv(program.c_str(), arguments.data());
    }
    return {ExitCode::unavailable, fmt::format("cannot start {}: {}", words.front(), std::strerror(errno))};
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
