// Where the running program's read-only data was installed.
#pragma once

#include <string>

namespace platform {

/// The folder "share" that the program was installed with: of the folders above the program's own, at most three, the
/// nearest that has one ("PREFIX/share" for PREFIX/bin/program and PREFIX/libexec/suite/program). Empty where there is
/// none. Any thread.
std::string sharedFolder();

} // namespace platform
