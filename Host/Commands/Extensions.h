// The extensions that a command speaks to: the one named on the command line, or those that are installed.
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

/// The manifest of the chosen extension, or those of every installed one, each with what is wrong with it in its place.
std::vector<Outcome<Manifest>> readManifests(const ExtensionChoice& choice);

/// The sound manifests of the chosen extension or of every installed one; at least one. What is wrong with others is
/// named on standard error.
Outcome<std::vector<Manifest>> manifestsOf(const ExtensionChoice& choice);

using ExtensionHandle = std::unique_ptr<ExtensionClient>;

struct Description {
    std::vector<WidgetInfo> widgets;
    /// As the extension wrote it, on one line.
    std::string text;
};

struct DescribedExtension {
    ExtensionHandle client;
    Description description;
};

/// What is done with one extension; answers whether it is the last that is wanted.
using UseExtension = std::function<Outcome<bool>(DescribedExtension&)>;

/// Starts the chosen extension, or every installed one, and uses one after the other. What fails with one does not
/// concern the others: it is named on standard error. The command fails where nothing else works, or when output cannot
/// be written.
std::optional<Failure> useExtensions(const ExtensionChoice& choice, const UseExtension& use);

/// Starts the extension that has the widget `kind`. Where there is one extension only, that is taken for it without
/// asking. What is wrong with others is named on standard error.
Outcome<ExtensionHandle> openExtensionFor(const std::string& kind, const ExtensionChoice& choice);
/// The same among these manifests, which are at least one.
Outcome<ExtensionHandle> openExtensionFor(const std::string& kind, const std::vector<Manifest>& manifests,
                                          const ExtensionChoice& choice);

/// The manifest of the extension with that identifier; what is wrong with others' does not matter.
Outcome<Manifest> manifestNamed(const std::string& identifier, const ExtensionChoice& choice);

/// Starts the extension with that identifier.
Outcome<ExtensionHandle> openExtensionNamed(const std::string& identifier, const ExtensionChoice& choice);

} // namespace host
