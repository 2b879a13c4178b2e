// `widgethost desktop` and `widgethost host`, which run day and night, and the commands that they alone can answer:
// `reload` and `explain`.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Commands/Extensions.h"
#include "Host/Session/HostApplication.h"

#include <filesystem>
#include <optional>
#include <string>

namespace host {

/// Returns the folder of the arrangement and of what else the host is configured by.
Outcome<std::filesystem::path> configurationFolder();

/// Shows the arrangement's widgets on the display of the environment until it is told to end. Call before any other
/// thread is started. There is one host in a session: where one runs already, that one answers.
std::optional<Failure> showDesktop(const ExtensionChoice& choice, Presence presence);

/// The same without a display: keeps the widgets up to date.
std::optional<Failure> runHost(const ExtensionChoice& choice);

/// Has the running host ask for its tiles of that kind, or all, at once, and waits for the answers.
std::optional<Failure> reloadTiles(const std::optional<std::string>& kind);

/// Has the running host print how a tile is doing.
std::optional<Failure> explainTile(InstanceId id);

/// The failure of a command that another process has answered and reported, by its exit code.
std::optional<Failure> alreadyReported(int exitCode);

/// Has a running host read the arrangement anew, so that it knows what was changed when this returns. Prints a warning
/// if there is no session bus: a host that runs without one follows the file.
void notifyHost();

} // namespace host
