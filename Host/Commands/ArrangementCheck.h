// Whether the arrangement can be read, and whether there is a widget in it.
#pragma once

#include "Host/Commands/Finding.h"

#include <filesystem>

namespace host {

/// `folder` is the arrangement's, absolute.
Finding checkArrangement(const std::filesystem::path& folder);

} // namespace host
