// A check that runs on a thread of its own.
//
// A check may never return: a stopped compositor, a file system whose server is gone. It is then left behind with its
// thread and counts as a finding itself; so it must own all that it uses.
#pragma once

#include "Host/Commands/Finding.h"

#include <chrono>
#include <functional>
#include <future>
#include <string>

namespace host {

/// How long a check may take.
inline constexpr std::chrono::seconds checkTimeout{10};

class PendingCheck {
  public:
    /// Starts the check. `name` is that of the finding if it does not answer before the timeout.
    PendingCheck(std::string name, std::function<Findings()> check,
                 std::chrono::steady_clock::duration timeout = checkTimeout);

    /// Waits for the findings until the timeout. Call once.
    Findings findings();

  private:
    std::string name_;
    std::chrono::steady_clock::time_point deadline_;
    std::future<Findings> result_;
};

} // namespace host
