// Which of the host's two programs a command line is for: the one with windows, which takes a toolkit to load, or the
// one with all other commands, which takes libraries that the windows start sooner without.
#pragma once

#include <span>

namespace host {

/// Whether `arguments`, without the program's name, ask for the desktop: by its command, or by none where there is a
/// display. Options of all commands may stand before it; faults are for the chosen program to find.
bool asksForDesktop(std::span<const char* const> arguments, bool hasDisplay);

} // namespace host
