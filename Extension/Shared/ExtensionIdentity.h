// What this extension is called by hosts, and in the log.
#pragma once

#include "Platform/Foundation/Log.h"

namespace foliovault {

inline constexpr const char* extensionIdentifier = "net.foliovault.widgets";

/// The log that all stores write to, with the extension's identifier as subsystem.
inline const platform::Log& extensionLog() {
    static const platform::SystemLog log(extensionIdentifier);
    return log;
}

} // namespace foliovault
