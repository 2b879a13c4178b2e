// The command line of `widgethost`.
#pragma once

namespace host {

/// Runs the command that the arguments name and returns the process's exit code. A failure is one line on standard
/// error. Without a command it shows the desktop where there is a display.
int runCommandLine(int argc, char** argv);

} // namespace host
