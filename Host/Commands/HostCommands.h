// `widgethost desktop` and `widgethost host`, which keep running, and the commands that need one of these: `reload` and
// `explain`.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Commands/Extensions.h"
#include "Host/Session/HostApplication.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// Returns the folder of the arrangement. Fails with `unreadable` if the environment names no absolute one.
Outcome<std::filesystem::path> configurationFolder();

/// Shows the arrangement's widgets on the environment's display until the host ends. Call before other threads start. If
/// a host already runs in the session, that one is activated instead.
std::optional<Failure> showDesktop(const ExtensionChoice& choice, Presence presence);

/// Keeps the widgets up to date without a display.
std::optional<Failure> runHost(const ExtensionChoice& choice);

/// Makes the running host carry out a command, "reload" or "explain", and waits until it has.
std::optional<Failure> askHost(const std::vector<std::string>& arguments);

/// Returns the failure for a non-zero exit code whose message has been printed by another process.
std::optional<Failure> alreadyReported(int exitCode);

/// Makes a running host read the arrangement again before this returns. Prints a warning without a session bus: a host
/// that runs without one follows the file.
void notifyHost();

} // namespace host
