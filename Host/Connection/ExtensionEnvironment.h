// The variables that an extension is started with, and nothing else.
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
/// A folder that is removed at the end of this.
using TemporaryFolder = std::unique_ptr<const std::filesystem::path, RemoveFolder>;

struct ExtensionEnvironment {
    /// What the extension is to take for the user's real home. Empty if the user database knows none.
    std::filesystem::path home;
    /// The extension's own folder.
    std::filesystem::path container;
    /// "NAME=value" each.
    std::vector<std::string> variables;
    /// Holds the user database that the extension has in place of the system's; may be null.
    TemporaryFolder userDatabase;
};

/// Makes the extension's container, a folder of its own in the user's data folder, and the variables: HOME and
/// XDG_CACHE_HOME in the container, PATH, language, time zone, proxies and certificates as this process has them.
///
/// With `home`, the extension is to take that folder for the user's real home: it gets a user database that says so (by
/// nss_wrapper), and its container lies in that home's data folder. A user whom only a directory service knows gets
/// such a database, too, where the wrapper is installed.
platform::Outcome<ExtensionEnvironment> makeExtensionEnvironment(const Manifest& manifest,
                                                                 const std::optional<std::filesystem::path>& home);

} // namespace host
