// A check that is under way, on a thread of its own.
//
// What a check asks may never answer: a stopped compositor, a file system whose server is gone. Such a check is left
// behind, with its thread, and counts as a finding itself; so it must own all that it uses.
#pragma once

#include "Host/Commands/Finding.h"

#include <chrono>
#include <functional>
#include <future>
#include <string>

namespace host {

/// How long whatever is checked has for its answers.
inline constexpr std::chrono::seconds checkPatience{10};

class PendingCheck {
  public:
    /// Begins. `name` is what is not answering, where nothing comes of it within the patience.
    PendingCheck(std::string name, std::function<Findings()> check,
                 std::chrono::steady_clock::duration patience = checkPatience);

    /// Waits for what is found, once.
    Findings findings();

  private:
    std::string name_;
    std::chrono::steady_clock::time_point deadline_;
    std::future<Findings> result_;
};

} // namespace host
