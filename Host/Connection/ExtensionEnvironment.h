// The environment that an extension is started with.
#pragma once

#include "Host/Connection/Manifest.h"
#include "Platform/Foundation/Failure.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host {

struct RemoveFolder {
    void operator()(const std::filesystem::path* folder) const;
};
/// A folder that is removed with this.
using TemporaryFolder = std::unique_ptr<const std::filesystem::path, RemoveFolder>;

struct ExtensionEnvironment {
    /// The user's real home, as the extension sees it. Empty if the user database has none.
    std::filesystem::path home;
    /// The extension's own folder.
    std::filesystem::path container;
    /// "NAME=value" each. The extension gets no others.
    std::vector<std::string> variables;
    /// The extension's own user database; null if it uses the system's.
    TemporaryFolder userDatabase;
};

/// Makes the extension's container, a folder in the user's data folder, and the variables: HOME and XDG_CACHE_HOME in
/// the container; PATH, language, time zone, proxies and certificates of this process.
///
/// With `home`, the extension sees that folder as the user's real home: it gets a user database of its own (by
/// nss_wrapper), and its container is in that home's data folder. A user of a directory service also gets such a
/// database if the wrapper is installed.
platform::Outcome<ExtensionEnvironment> makeExtensionEnvironment(const Manifest& manifest,
                                                                 const std::optional<std::filesystem::path>& home);

} // namespace host
