// Calls the host that runs in this login session, over the session bus.
//
// The host accepts these command lines: "sync" reads the arrangement again; "add" (AddCommand.h); "reload [KIND]";
// "explain ID"; "host" prints that it runs. Its output appears on this process's streams.
#pragma once

#include "Platform/Foundation/Expected.h"

#include <string>
#include <vector>

namespace host {

/// The host's name on the bus.
inline constexpr const char* busName = "net.foliovault.WidgetHost";

enum class NoHost { noBus, noneRuns };

/// Calls the running host with `arguments`. Returns its exit code.
platform::Expected<int, NoHost> callRunningHost(const std::vector<std::string>& arguments);

} // namespace host
