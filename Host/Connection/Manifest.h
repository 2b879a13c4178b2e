// An extension's manifest: who it is, where its program lies, and what it needs to be allowed.
//
//     {"identifier": "net.foliovault.widgets", "name": "FOLIOvault", "executable": "foliovault-widgets",
//      "reads": ["Library/Application Support/FOLIOvault"], "network": true}
//
// Manifests are installed as widgethost/extensions/NAME.json under an XDG data folder.
#pragma once

#include "Platform/Foundation/Failure.h"

#include <filesystem>
#include <string>
#include <vector>

namespace host {

struct Manifest {
    std::string identifier;
    /// For people; the identifier where the manifest has no "name".
    std::string name;
    /// Absolute.
    std::filesystem::path executable;
    /// Folders below the user's real home that the extension may read.
    std::vector<std::string> reads;
    /// Whether it may connect out.
    bool network = false;
};

/// Reads a manifest; a relative executable is meant from the manifest's folder.
platform::Outcome<Manifest> readManifest(const std::filesystem::path& file);

/// Whether the extension may read what lies at `path` below the home: in one of its folders, links aside.
bool mayRead(const Manifest& manifest, const std::filesystem::path& path);

/// The extension that a user names by `path`: a manifest, or an executable with its manifest beside it as `path`.json;
/// one without reads nothing of the home and does not connect.
platform::Outcome<Manifest> manifestFor(const std::filesystem::path& path);

/// The manifests installed in the XDG data folders (the user's first, then the system's, then share beside this
/// program's own bin folder), by name; of two of the same name the first counts.
std::vector<std::filesystem::path> installedManifests();

} // namespace host
