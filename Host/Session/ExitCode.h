// How commands end, be they answered by their own process or by the running host.
#pragma once

#include "Host/Arrangement/ArrangementFile.h"

namespace host {

/// The process's exit codes, those of sysexits.h.
enum class ExitCode {
    success = 0,
    /// The command line, or a choice on it, is wrong.
    usage = 64,
    /// The extension is missing, died, fell silent or speaks nonsense.
    unavailable = 69,
    /// The output cannot be written.
    cannotCreate = 73,
    /// A file of the host's own is broken, of a newer version, or not to be read.
    configuration = 78,
};

inline ExitCode exitCodeOf(ArrangementError::Kind kind) {
    switch (kind) {
    case ArrangementError::Kind::refused:
        return ExitCode::usage;
    case ArrangementError::Kind::unwritable:
        return ExitCode::cannotCreate;
    case ArrangementError::Kind::unreadable:
        break;
    }
    return ExitCode::configuration;
}

} // namespace host
