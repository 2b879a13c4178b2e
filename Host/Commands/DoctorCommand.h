// `widgethost doctor`: what stands in the way of widgets on this machine, and what to do about it.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Commands/Output.h"

#include <optional>

namespace host {

/// Checks everything that widgets depend on and prints what it finds. Where something is a problem the command ends
/// with `Failure::Kind::unavailable`. Takes little more than `checkPatience` when one
/// thing hangs, at most twice that and a moment for each extension.
std::optional<Failure> doctor(const ExtensionChoice& choice, TextFormat format);

} // namespace host
