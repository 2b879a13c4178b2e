// How a command ends when it cannot do what was asked.
#pragma once

#include "Host/Session/ExitCode.h"
#include "Platform/Foundation/Expected.h"

#include <string>

namespace host {

struct Failure {
    ExitCode code = ExitCode::usage;
    /// One clear line for standard error; empty where it has been said already.
    std::string message;
};

template <class Value>
using Outcome = platform::Expected<Value, Failure>;

} // namespace host
