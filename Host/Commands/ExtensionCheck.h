// Checks whether extensions start and answer, and collects the schemes of their links.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Commands/Finding.h"

#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace host {

struct ExtensionFindings {
    /// One per extension, in the order of the manifests.
    Findings findings;
    /// The schemes of all links in the answers.
    std::set<std::string> schemes;
};

/// Starts all extensions at once. Requests from each its description, and a placeholder and a timeline of each widget
/// with the default configuration in its largest family. Returns at the latest soon after the timeout. Runs the default
/// main context.
ExtensionFindings checkExtensions(const std::vector<Manifest>& manifests, const ExtensionChoice& choice,
                                  std::chrono::seconds timeout);

} // namespace host
