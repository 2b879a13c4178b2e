// The host that runs in this login session, found on the session bus.
//
// It answers command lines: "sync", to read the arrangement anew; "add" (AddCommand.h); "reload [KIND]";
// "explain ID"; "host", which it answers by saying that it is there. What it prints comes out here, and its exit code
// comes back.
#pragma once

#include "Platform/Foundation/Expected.h"

#include <string>
#include <vector>

namespace host {

/// The host's name on the bus.
inline constexpr const char* busName = "net.foliovault.WidgetHost";

struct NoHost {
    enum class Reason { noBus, noneRuns };
    Reason reason = Reason::noneRuns;
};

/// Calls the running host with `arguments`. Returns its exit code.
platform::Expected<int, NoHost> callRunningHost(const std::vector<std::string>& arguments);

} // namespace host
