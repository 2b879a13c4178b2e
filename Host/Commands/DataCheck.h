// Checks whether the data that extensions read exists and is readable.
#pragma once

#include "Host/Commands/Finding.h"
#include "Host/Connection/Manifest.h"

#include <filesystem>

namespace host {

/// Returns one finding for each folder below `home` that the manifest allows the extension to read: whether its regular
/// files can be opened. Reads no contents.
Findings checkData(const Manifest& manifest, const std::filesystem::path& home);

} // namespace host
