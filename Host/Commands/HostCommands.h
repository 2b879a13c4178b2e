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

/// The folder of the arrangement and of what else the host is configured by.
Outcome<std::filesystem::path> configurationFolder();

/// Keeps the arrangement's widgets up to date until it is told to end. One in a session: where one runs already, that
/// one answers.
std::optional<Failure> runHost(const ExtensionChoice& choice);

/// The same, on a display.
std::optional<Failure> runHost(const ExtensionChoice& choice, HostDisplay& display, Presence presence);

/// Has the running host ask for its tiles of that kind, or all, at once, and waits for the answers.
std::optional<Failure> reloadTiles(const std::optional<std::string>& kind);

/// What the running host has said already, as an exit code.
std::optional<Failure> saidAlready(int code);

/// Has the running host say how a tile is doing.
std::optional<Failure> explainTile(InstanceId id);

/// Has a running host read the arrangement anew, so that it knows what was changed when this returns. Where there is no
/// session bus, says so: a host that runs without one notices by the file.
void tellOfArrangement();

} // namespace host
