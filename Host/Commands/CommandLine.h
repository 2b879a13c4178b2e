// The command line of widgethost-commands: all of `widgethost` but the desktop.
#pragma once

namespace host {

/// Does what the arguments say; answers the process's exit code. A failure is one line on standard error.
int runCommandLine(int argc, char** argv);

} // namespace host
