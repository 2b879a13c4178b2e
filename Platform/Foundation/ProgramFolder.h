// Where the running program lies.
#pragma once

#include <string>

namespace platform {

/// The folder of the running program's file, links resolved; empty where /proc is missing. Any thread.
std::string programFolder();

} // namespace platform
