// The extensions that a command uses: the one named on the command line, or the installed ones.
#pragma once

#include "Host/Commands/PendingResponse.h"
#include "Host/Connection/ExtensionClient.h"
#include "Host/Connection/Messages.h"
#include "Host/Connection/Requests.h"
#include "Platform/Foundation/Failure.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

using platform::Failure;
using platform::Outcome;

struct ExtensionChoice {
    std::optional<std::filesystem::path> extension;
    std::optional<std::filesystem::path> home;
    Confined confined = Confined::yes;
};

/// Returns the manifest of the chosen extension, or those of all installed ones, each or why it cannot be read.
std::vector<Outcome<Manifest>> readManifests(const ExtensionChoice& choice);

/// Returns the readable manifests, at least one. Names the faults of others on standard error.
Outcome<std::vector<Manifest>> manifestsOf(const ExtensionChoice& choice);

using ExtensionHandle = std::unique_ptr<ExtensionClient>;

struct Description {
    std::vector<WidgetInfo> widgets;
    /// As the extension wrote it, one line.
    std::string text;
};

struct DescribedExtension {
    ExtensionHandle client;
    Description description;
};

/// Uses one extension. Returns true if no other is needed.
using UseExtension = std::function<Outcome<bool>(DescribedExtension&)>;

/// Starts the chosen extension, or all installed ones, and uses one after the other. Names failures of single ones on
/// standard error. Fails if every one fails, or if output cannot be written.
std::optional<Failure> useExtensions(const ExtensionChoice& choice, const UseExtension& use);

/// Starts the extension that has the widget `kind`. A single extension is started without checking. Names the faults of
/// others on standard error.
Outcome<ExtensionHandle> openExtensionFor(const std::string& kind, const ExtensionChoice& choice);
/// Does the same with these manifests, at least one.
Outcome<ExtensionHandle> openExtensionFor(const std::string& kind, const std::vector<Manifest>& manifests,
                                          const ExtensionChoice& choice);

/// Returns the manifest of the extension with that identifier. Ignores the faults of others.
Outcome<Manifest> manifestNamed(const std::string& identifier, const ExtensionChoice& choice);

/// Starts the extension with that identifier.
Outcome<ExtensionHandle> openExtensionNamed(const std::string& identifier, const ExtensionChoice& choice);

} // namespace host
