// How a command ends when it cannot do what was asked.
#pragma once

#include "Platform/Foundation/Expected.h"

#include <string>

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

struct Failure {
    ExitCode code = ExitCode::usage;
    /// One clear line for standard error; empty where it has been said already.
    std::string message;
};

template <class Value>
using Outcome = platform::Expected<Value, Failure>;

} // namespace host
