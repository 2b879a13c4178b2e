// Where the running program and its read-only data were installed. Any thread.
#pragma once

#include <string>

namespace platform {

/// Returns the folder of the running program's file, links resolved; empty without /proc.
std::string programFolder();

/// Returns the folder "share" beside that of the running program, PREFIX/share for PREFIX/bin/program; empty if it
/// is missing.
std::string sharedFolder();

} // namespace platform
