#include "Host/Commands/DoctorCommand.h"

#include "Host/Commands/ArrangementCheck.h"
#include "Host/Commands/BusCheck.h"
#include "Host/Commands/DataCheck.h"
#include "Host/Commands/DisplayCheck.h"
#include "Host/Commands/DoctorReport.h"
#include "Host/Commands/ExtensionCheck.h"
#include "Host/Commands/FontCheck.h"
#include "Host/Commands/HostCommands.h"
#include "Host/Commands/LandlockCheck.h"
#include "Host/Commands/PendingCheck.h"
#include "Host/Commands/SchemeCheck.h"
#include "Host/Connection/Landlock.h"
#include "Host/Connection/UserFolders.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <unistd.h>

namespace host {
namespace {

void append(Findings& findings, Findings more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings));
}

/// The manifests that can be read; what is wrong with others is added to `findings`.
std::vector<Manifest> soundManifests(const ExtensionChoice& choice, Findings& findings) {
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
            findings.push_back(
                Finding::problem("extension", manifest.error(), "install the extension anew, or remove the manifest"));
        }
    }
    return manifests;
}

Findings arrangementFindings() {
    const auto folder = configurationFolder();
    if (!folder) {
        return {Finding::problem("arrangement", folder.error().message, "set HOME to your home folder")};
    }
    return {checkArrangement(*folder)};
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
    const std::vector<Manifest> manifests = soundManifests(choice, findings);
    // All at once; reported in the order of what a widget needs first.
    PendingCheck data("data", [manifests, home = choice.home] { return dataFindings(manifests, home); });
    PendingCheck fonts("font", checkFonts);
    PendingCheck bus("session bus", checkBus);
    PendingCheck display("compositor", checkDisplay);
    PendingCheck arrangement("arrangement", arrangementFindings);

    auto extensions =
        checkExtensions(manifests, {.home = choice.home, .confined = choice.confined, .patience = checkPatience});
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
