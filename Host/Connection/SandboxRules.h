// The files and network access of an extension's process: a value made from its manifest, which `Sandbox` enforces.
//
// An extension may
// - read the system's libraries, zone and locale data, and run the dynamic loader,
// - run its own program, and read the translations beside it (share/locale beside the program's folder),
// - read the folders that its manifest names below the user's real home,
// - read and write in its container, but not run what it wrote there,
// - open network connections, if its manifest says network, and then read certificates and resolver files.
// A program that is a script (#!) may also run the system's commands.
//
// Everything else is denied: the rest of the home, fonts, /proc, other files of /etc. The files of /etc are granted one
// by one since the folder has the system's secrets; `Sandbox::needsRestart` notices when one of them is replaced. For
// the same reason the program is granted as a file: its folder may be the home.
#pragma once

#include "Host/Connection/ExtensionEnvironment.h"
#include "Host/Connection/Manifest.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

enum class FileAccess {
    /// Read files, list folders.
    read,
    /// Also run programs.
    readAndRun,
    /// Read and write files; for devices.
    readAndWrite,
    /// Read, write, create and delete; no execution, no sockets or device nodes.
    readWriteCreate,
};

/// A file, or a folder with everything below it. A file that does not exist is not granted.
struct FileGrant {
    /// Absolute.
    std::string path;
    FileAccess access = FileAccess::read;
};

enum class NetworkAccess {
    none,
    /// Outgoing connections only.
    connections,
};

struct SandboxRules {
    std::vector<FileGrant> files;
    NetworkAccess network = NetworkAccess::none;
};

/// Returns the interpreter of a script, which its first line names after "#!"; nothing for other programs.
std::optional<std::filesystem::path> scriptInterpreter(const std::filesystem::path& program);

/// Makes the rules for an extension that is started with `environment`. `interpreter` is `scriptInterpreter`'s result.
SandboxRules sandboxRules(const Manifest& manifest, const ExtensionEnvironment& environment,
                          const std::optional<std::filesystem::path>& interpreter);

} // namespace host
