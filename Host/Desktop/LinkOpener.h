// Hands links to the applications that the user has for them.
#pragma once

#include <string>

namespace host {

/// Opens `url` by the desktop's own choice for its scheme. Whether there is one and it was
/// started.
bool openLink(const std::string& url);

} // namespace host
