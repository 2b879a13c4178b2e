// The name of this extension for hosts and the log.
#pragma once

#include "Platform/Foundation/Log.h"

namespace foliovault {

inline constexpr const char* extensionIdentifier = "net.foliovault.widgets";

/// Returns the log of all stores, with the extension's identifier as subsystem.
inline const platform::Log& extensionLog() {
    static const platform::SystemLog log(extensionIdentifier);
    return log;
}

} // namespace foliovault
