#include "Host/Session/RunningExtension.h"

#include <algorithm>
#include <utility>

namespace host {

RunningExtension::RunningExtension(ExtensionChannel channel, const Timeouts& timeouts, SteadyTime now)
    : channel_(std::move(channel)), timeouts_(timeouts), lastHeard_(now) {}

void RunningExtension::ask(std::string_view method, std::string_view params, Ticket ticket, SteadyTime now) {
    ask({.ticket = ticket, .method = std::string(method), .params = std::string(params), .since = now}, now);
}

void RunningExtension::ask(Asked asked, SteadyTime now) {
    if (asked_.empty()) {
        lastHeard_ = now;
    }
    const std::int64_t id = channel_.send(asked.method, asked.params);
    asked_.insert_or_assign(id, std::move(asked));
}

void RunningExtension::takeOver(RunningExtension& other, SteadyTime now) {
    for (auto& [id, asked] : std::exchange(other.asked_, {})) {
        if (asked.isTakenOver) {
            other.asked_.emplace(id, std::move(asked));
        } else {
            asked.isTakenOver = true;
            ask(std::move(asked), now);
        }
    }
}

void RunningExtension::exchange(const ExtensionChannel::Descriptors& ready, SteadyTime now) {
    const bool isHeard =
        std::any_of(ready.begin(), ready.end(), [](const pollfd& each) { return (each.revents & POLLIN) != 0; });
    if (isHeard && (!isLeaving_ || !asked_.empty())) {
        lastHeard_ = now;
    }
    const bool wasClosed = channel_.isClosed();
    channel_.exchange(ready);
    if (channel_.isClosed() && !wasClosed) {
        dismiss(now);
    }
}

std::optional<RunningExtension::Answer> RunningExtension::nextAnswer(SteadyTime now) {
    while (auto answer = channel_.nextAnswer()) {
        if (const auto asked = asked_.extract(answer->id)) {
            const std::chrono::duration<double> taken = now - asked.mapped().since;
            return Answer{asked.mapped().ticket, std::move(answer->line), taken.count()};
        }
    }
    return std::nullopt;
}

std::vector<Ticket> RunningExtension::takeUnanswered() {
    std::vector<Ticket> tickets;
    for (const auto& [id, asked] : std::exchange(asked_, {})) {
        tickets.push_back(asked.ticket);
    }
    return tickets;
}

std::chrono::milliseconds RunningExtension::timeout() const {
    if (!asked_.empty() && !channel_.isClosed()) {
        return timeouts_.response;
    }
    return isLeaving_ ? timeouts_.shutdown : timeouts_.idle;
}

std::optional<SteadyTime> RunningExtension::deadline() const {
    return channel_.lost() ? std::nullopt : std::optional(lastHeard_ + timeout());
}

void RunningExtension::expire(SteadyTime now) {
    const auto due = deadline();
    if (!due || now < *due) {
        return;
    }
    if (!asked_.empty()) {
        channel_.expire(timeout());
    } else if (isLeaving_) {
        channel_.lose("did not leave");
    } else {
        dismiss(now);
    }
}

void RunningExtension::dismiss(SteadyTime now) {
    isLeaving_ = true;
    lastHeard_ = now;
    channel_.endInput();
}

} // namespace host
