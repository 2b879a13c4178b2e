#include "Host/Commands/PendingCheck.h"

#include <thread>
#include <utility>

namespace host {

PendingCheck::PendingCheck(std::string name, std::function<Findings()> check,
                           std::chrono::steady_clock::duration timeout)
    : name_(std::move(name)), deadline_(std::chrono::steady_clock::now() + timeout) {
    std::packaged_task<Findings()> task(std::move(check));
    result_ = task.get_future();
    std::thread(std::move(task)).detach();
}

Findings PendingCheck::findings() {
    if (result_.wait_until(deadline_) == std::future_status::ready) {
        return result_.get();
    }
    return {Finding::problem(name_, "does not answer", "restart the program or server that does not answer")};
}

} // namespace host
