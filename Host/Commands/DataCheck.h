// Whether the data that extensions read exists and is readable.
#pragma once

#include "Host/Commands/Finding.h"
#include "Host/Connection/Manifest.h"

#include <filesystem>

namespace host {

/// Returns one finding for each folder below `home` that the manifest lets the extension read, by whether the files in
/// it can be opened. Reads no contents and ignores what is no regular file.
Findings checkData(const Manifest& manifest, const std::filesystem::path& home);

} // namespace host
