#include "Host/Commands/DoctorCommand.h"

#include "Host/Arrangement/ArrangementFile.h"
#include "Host/Commands/DoctorReport.h"
#include "Host/Commands/ExtensionCheck.h"
#include "Host/Commands/HostCommands.h"
#include "Host/Commands/MachineChecks.h"
#include "Host/Commands/SchemeCheck.h"
#include "Host/Connection/Landlock.h"
#include "Host/Connection/UserFolders.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <iterator>
#include <thread>
#include <unistd.h>

namespace host {
namespace {

constexpr std::chrono::seconds checkTimeout{10};

/// A check on a thread of its own, which owns all that it uses.
///
/// It may never return, because of a stopped compositor or a file system whose server is gone. That is a finding, too;
/// the thread is left running.
class PendingCheck {
  public:
    /// Starts the check. `name` names the finding if it does not return before the timeout.
    PendingCheck(std::string name, std::function<Findings()> check)
        : name_(std::move(name)), deadline_(std::chrono::steady_clock::now() + checkTimeout) {
        std::packaged_task<Findings()> task(std::move(check));
        result_ = task.get_future();
        std::thread(std::move(task)).detach();
    }

    /// Waits for the findings until the timeout. Call once.
    Findings findings() {
        if (result_.wait_until(deadline_) == std::future_status::ready) {
            return result_.get();
        }
        return {Finding::problem(name_, "does not answer", "restart the program or server that does not answer")};
    }

  private:
    std::string name_;
    std::chrono::steady_clock::time_point deadline_;
    std::future<Findings> result_;
};

void append(Findings& findings, Findings more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings));
}

/// Returns the readable manifests. Adds a finding for each other one.
std::vector<Manifest> validManifests(const ExtensionChoice& choice, Findings& findings) {
    auto all = readManifests(choice);
    if (all.empty()) {
        findings.push_back(
            Finding::problem("extension", "no extension is installed", "install one, or name one with --extension"));
    }
    std::vector<Manifest> manifests;
    for (auto& manifest : all) {
        if (manifest) {
            manifests.push_back(*std::move(manifest));
        } else {
            findings.push_back(Finding::problem("extension", manifest.error().message,
                                                "reinstall the extension, or remove the manifest"));
        }
    }
    return manifests;
}

/// Checks whether the arrangement can be read, and whether it has a widget.
Findings checkArrangement() {
    constexpr const char* name = "arrangement";
    const auto folder = configurationFolder();
    if (!folder) {
        return {Finding::problem(name, folder.error().message, "set HOME to your home folder")};
    }
    const auto arrangement = ArrangementFile(platform::DiskFileSystem::shared(), *folder).load();
    if (!arrangement) {
        return {Finding::problem(name, arrangement.error().message,
                                 "repair the file or move it away; a newer file needs the newer program")};
    }
    const std::size_t count = arrangement->instances.size();
    if (count == 0) {
        return {Finding::note(name, "no widget is placed", "place one with widgethost add KIND")};
    }
    return {Finding::ok(name, fmt::format("{} {} placed", count, count == 1 ? "widget is" : "widgets are"))};
}

/// Checks whether the kernel can confine extensions to their files. `version` is Landlock's, 0 without it.
Finding checkLandlock(int version) {
    constexpr int firstWithTcp = 4;
    constexpr int firstWithSignals = 6;
    if (version <= 0) {
        return Finding::note("Landlock", "missing in the kernel: extensions can read every file that you can",
                             "boot Linux 5.13 or later, with landlock among its security modules (lsm=)");
    }
    return Finding::ok("Landlock", fmt::format("version {}: confines extensions in files{}{}", version,
                                               version >= firstWithTcp ? ", TCP" : "",
                                               version >= firstWithSignals ? ", signals" : ""));
}

Findings dataFindings(const std::vector<Manifest>& manifests, const std::optional<std::filesystem::path>& chosen) {
    const std::filesystem::path home = realHome(chosen);
    Findings findings;
    for (const Manifest& manifest : manifests) {
        append(findings, checkData(manifest, home));
    }
    return findings;
}

bool wantsColour() {
    const char* refused = std::getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe): nothing here sets variables
    return isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0');
}

} // namespace

std::optional<Failure> doctor(const ExtensionChoice& choice, TextFormat format) {
    Findings findings;
    const std::vector<Manifest> manifests = validManifests(choice, findings);
    // All start at once, but for the display: GDK handles its events in the main context that extensions run. The report
    // lists first what a widget needs first.
    PendingCheck data("data", [manifests, home = choice.home] { return dataFindings(manifests, home); });
    PendingCheck fonts("font", checkFonts);
    PendingCheck bus("session bus", checkBus);
    PendingCheck arrangement("arrangement", checkArrangement);

    auto extensions = checkExtensions(manifests, choice, checkTimeout);
    PendingCheck display("compositor", checkDisplay);
    PendingCheck links("links", [schemes = std::move(extensions.schemes)] { return checkSchemes(schemes); });
    append(findings, std::move(extensions.findings));
    append(findings, {checkLandlock(landlockVersion())});
    for (PendingCheck* check : {&data, &links, &fonts, &display, &bus, &arrangement}) {
        append(findings, check->findings());
    }
    const std::string report = format == TextFormat::json
                                   ? doctorJson(findings)
                                   : doctorReport(findings, wantsColour() ? Colouring::colours : Colouring::plain);
    if (auto failure = writeOutput(report, std::nullopt)) {
        return failure;
    }
    const bool isWell = std::none_of(findings.begin(), findings.end(),
                                     [](const Finding& each) { return each.state == Finding::State::problem; });
    return isWell ? std::nullopt : std::optional(Failure{Failure::Kind::unavailable, ""});
}

} // namespace host
