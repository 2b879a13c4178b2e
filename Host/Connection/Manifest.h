// An extension's manifest: its identifier, its program, and the access that it needs.
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
    /// Whether it may open network connections.
    bool network = false;
};

/// Reads a manifest. A relative executable is relative to the manifest's folder.
platform::Outcome<Manifest> readManifest(const std::filesystem::path& file);

/// Whether `path`, relative to the home, is in one of the folders that the extension may read. Ignores links.
bool mayRead(const Manifest& manifest, const std::filesystem::path& path);

/// Returns the extension that a user names by `path`: a manifest, or an executable with its manifest at `path`.json.
/// One without a manifest may not read the home or use the network.
platform::Outcome<Manifest> manifestFor(const std::filesystem::path& path);

/// Returns the manifests installed in the XDG data folders: the user's, the system's, and share beside this program's
/// bin folder. Of two manifests with the same name, only the first is returned.
std::vector<std::filesystem::path> installedManifests();

} // namespace host
