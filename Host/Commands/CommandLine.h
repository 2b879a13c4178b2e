// The command line of `widgethost`.
#pragma once

namespace host {

/// Runs the command that the arguments name and returns the process's exit code. Prints a failure as one line on
/// standard error. Without a command, shows the desktop if there is a display.
int runCommandLine(int argc, char** argv);

} // namespace host
