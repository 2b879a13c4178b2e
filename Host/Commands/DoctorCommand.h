// `widgethost doctor`: what stands in the way of widgets on this machine, and what to do about it.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Commands/Output.h"

#include <optional>

namespace host {

/// Checks everything that widgets depend on and prints the findings. Fails with `unavailable` if one is a problem.
/// Takes little more than `checkTimeout` when something hangs, at most twice that.
std::optional<Failure> doctor(const ExtensionChoice& choice, TextFormat format);

} // namespace host
