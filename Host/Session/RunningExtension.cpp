#include "Host/Session/RunningExtension.h"

#include <fmt/format.h>

#include <utility>

namespace host {

RunningExtension::RunningExtension(ExtensionChannel channel, const Patience& patience, SteadyTime now)
    : channel_(std::move(channel)), patience_(patience), lastHeard_(now) {}

void RunningExtension::ask(std::string_view method, std::string_view params, Ticket ticket, SteadyTime now) {
    if (asked_.empty()) {
        lastHeard_ = now;
    }
    asked_.insert_or_assign(channel_.send(method, params), Asked{ticket, now});
}

std::optional<RunningExtension::Answer> RunningExtension::nextAnswer(SteadyTime now) {
    auto answer = channel_.nextAnswer();
    if (!answer) {
        return std::nullopt;
    }
    // A channel answers what it was asked for, and once.
    const Asked asked = asked_.extract(answer->id).mapped();
    const std::chrono::duration<double> taken = now - asked.since;
    return Answer{asked.ticket, std::move(answer->line), taken.count()};
}

std::vector<Ticket> RunningExtension::takeUnanswered() {
    std::vector<Ticket> tickets;
    for (const auto& [id, asked] : std::exchange(asked_, {})) {
        tickets.push_back(asked.ticket);
    }
    return tickets;
}

SteadyTime RunningExtension::deadline() const {
    if (isLeaving_) {
        return lastHeard_ + patience_.leaving;
    }
    return lastHeard_ + (asked_.empty() ? patience_.idleness : patience_.silence);
}

void RunningExtension::expire(SteadyTime now) {
    if (now < deadline()) {
        return;
    }
    if (isLeaving_) {
        channel_.lose("did not leave");
    } else if (asked_.empty()) {
        dismiss(now);
    } else {
        const auto seconds = std::chrono::duration<double>(patience_.silence).count();
        channel_.lose(fmt::format("was silent for {:g} seconds", seconds));
    }
}

void RunningExtension::dismiss(SteadyTime now) {
    isLeaving_ = true;
    lastHeard_ = now;
    channel_.endInput();
}

} // namespace host
