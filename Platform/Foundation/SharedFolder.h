// Where the running program's read-only data was installed.
#pragma once

#include <string>

namespace platform {

/// Returns the folder "share" beside that of the running program, PREFIX/share for PREFIX/bin/program; empty if it
/// is missing. Any thread.
std::string sharedFolder();

} // namespace platform
