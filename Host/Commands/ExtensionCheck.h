// Whether extensions start and answer, and what their widgets link to.
#pragma once

#include "Host/Commands/Finding.h"
#include "Host/Connection/Manifest.h"
#include "Host/Connection/Sandbox.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace host {

struct ExtensionTrial {
    /// As in `makeExtensionEnvironment`.
    std::optional<std::filesystem::path> home;
    Confined confined = Confined::yes;
    std::chrono::seconds timeout{};
};

struct ExtensionFindings {
    /// One for each extension, in their order.
    Findings findings;
    /// The schemes of the links and addresses in what the widgets answered.
    std::set<std::string> schemes;
};

/// Starts the extensions, all at once, and asks each to describe itself and for a placeholder and a timeline of each
/// widget, with the default configuration, in the largest size that it has. Takes a moment longer than the
/// timeout at most, however extensions behave. Runs the default main context.
ExtensionFindings checkExtensions(const std::vector<Manifest>& manifests, const ExtensionTrial& trial);

} // namespace host
