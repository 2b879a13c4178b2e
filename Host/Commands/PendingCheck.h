// A check that runs on a thread of its own.
//
// A check may never return, because of a stopped compositor or a file system whose server is gone. That is a finding,
// too; its thread is left running. So a check must own all that it uses.
#pragma once

#include "Host/Commands/Finding.h"

#include <chrono>
#include <functional>
#include <future>
#include <string>

namespace host {

inline constexpr std::chrono::seconds checkTimeout{10};

class PendingCheck {
  public:
    /// Starts the check. `name` names the finding if the check does not return before the timeout.
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
