// `widgethost doctor`: finds what keeps widgets from working on this machine, and says what to do.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Commands/Output.h"

#include <optional>

namespace host {

/// Checks everything that widgets depend on and prints the findings. Fails with `unavailable` if one is a problem.
/// Takes at most 20 s when something hangs.
std::optional<Failure> doctor(const ExtensionChoice& choice, TextFormat format);

} // namespace host
