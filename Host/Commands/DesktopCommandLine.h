// The command line of widgethost-desktop: `widgethost desktop`, and `widgethost` alone.
#pragma once

namespace host {

/// Shows the desktop until told to end; answers the process's exit code. A failure is one line on standard error.
int runDesktopCommandLine(int argc, char** argv);

} // namespace host
