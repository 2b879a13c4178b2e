// Whether a Wayland compositor has the layer shell, whose surfaces may lie under all windows.
#pragma once

#include "Platform/Foundation/Expected.h"

#include <cstdint>

namespace host {

/// Returns the version of the layer shell of the environment's compositor; 0 if it has none. The error is `errno` if
/// the compositor cannot be reached. Blocks until the compositor answers.
platform::Expected<std::uint32_t, int> layerShellVersion();

} // namespace host
