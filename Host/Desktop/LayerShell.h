// Whether a Wayland compositor has the layer shell, whose surfaces may lie under all windows.
#pragma once

#include "Platform/Foundation/Expected.h"

#include <cstdint>

namespace host {

/// Asks the compositor of the environment for the version of its layer shell; 0 where it has none. The error is that of
/// `errno` where the compositor cannot be reached. Blocks until the compositor answers.
platform::Expected<std::uint32_t, int> layerShellVersion();

} // namespace host
