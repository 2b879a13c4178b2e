// The command line of widgethost-desktop, the host with windows. `widgethost desktop` becomes it; people do not start
// it themselves.
#pragma once

namespace host {

/// The whole program; its exit code.
int runDesktopCommandLine(int argc, char** argv);

} // namespace host
