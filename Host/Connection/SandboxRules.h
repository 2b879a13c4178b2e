// What an extension's process may touch: a value made from its manifest, which `Sandbox` enforces.
//
// An extension may
// - read the system's libraries, zone and locale data, and run the dynamic loader,
// - run its own program, and read the translations beside it (share/locale beside the program's folder),
// - read the folders that its manifest names below the user's real home,
// - read and write in its container, but not run what it wrote there,
// - connect out, if its manifest says network, and then read certificates and resolver files.
// A program that is a script (#!) may run the system's commands besides, as it could do nothing without them.
//
// What it may not is everything else: the rest of the home, fonts, /proc, other files of /etc than those named. The
// files of /etc are granted one by one since the folder has the system's secrets; `Sandbox::needsRestart` notices
// when one of them is replaced. For the same reason the program is granted as a file, not by its folder: that may be
// the home.
#pragma once

#include "Host/Connection/ExtensionEnvironment.h"
#include "Host/Connection/Manifest.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

enum class FileAccess {
    /// Files are read, folders listed.
    read,
    /// Programs are run, too.
    readAndRun,
    /// Files are read and written, as devices are.
    readAndWrite,
    /// Read, write, create and delete; no execution, no sockets or device nodes.
    readWriteCreate,
};

/// A file, or a folder with all that is below it. What does not exist is not granted.
struct FileGrant {
    /// Absolute.
    std::string path;
    FileAccess access = FileAccess::read;

    bool operator==(const FileGrant&) const = default;
};

enum class NetworkAccess {
    none,
    /// Connections out, but nobody is listened to.
    connections,
};

struct SandboxRules {
    std::vector<FileGrant> files;
    NetworkAccess network = NetworkAccess::none;
};

/// The program that runs `program`, if that is a script: what its first line names after "#!".
std::optional<std::filesystem::path> scriptInterpreter(const std::filesystem::path& program);

/// The rules for an extension that is started with `environment`; `interpreter` as `scriptInterpreter` answered.
SandboxRules sandboxRules(const Manifest& manifest, const ExtensionEnvironment& environment,
                          const std::optional<std::filesystem::path>& interpreter);

} // namespace host
