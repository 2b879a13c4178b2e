// Whether the data that extensions read is there, and may be read.
#pragma once

#include "Host/Commands/Finding.h"
#include "Host/Connection/Manifest.h"

#include <filesystem>

namespace host {

/// One finding for each folder that the manifest says the extension reads below `home`, by the files right in it.
/// Nothing is read of what they contain, and what is no regular file is passed over.
Findings checkData(const Manifest& manifest, const std::filesystem::path& home);

} // namespace host
