// An extension's process while it runs, and which tiles wait for what.
//
// It has deadlines by the steady clock: silence while something is awaited ends it, and so does having nothing to do.
#pragma once

#include "Host/Connection/ExtensionChannel.h"
#include "Host/Connection/Timeouts.h"
#include "Host/Session/Tile.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace host {

class RunningExtension {
  public:
    RunningExtension(ExtensionChannel channel, const Timeouts& timeouts, SteadyTime now);

    /// Sends a request; the answer comes under `ticket`.
    void ask(std::string_view method, std::string_view params, Ticket ticket, SteadyTime now);

    /// Asks what `other` was asked and has not answered, whose answers do not count any more. What it has taken over
    /// itself stays with it, so that every request is answered in the end.
    void takeOver(RunningExtension& other, SteadyTime now);

    /// Moves what can be moved either way, as `ExtensionChannel::exchange`.
    void exchange(const ExtensionChannel::Descriptors& ready, SteadyTime now);

    struct Answer {
        Ticket ticket;
        std::string line;
        double seconds = 0;
    };
    std::optional<Answer> nextAnswer(SteadyTime now);

    /// What will not be answered any more, because the extension is lost.
    std::vector<Ticket> takeUnanswered();

    ExtensionChannel& channel() { return channel_; }
    const ExtensionChannel& channel() const { return channel_; }
    /// Whether the next request is to go to a process of its own: this one was told to leave, or is lost.
    bool isLeaving() const { return isLeaving_ || channel_.lost(); }

    /// When `expire` has something to do; nothing once the extension is lost.
    std::optional<SteadyTime> deadline() const;
    /// Tells it to leave, or makes it, as the deadline has it.
    void expire(SteadyTime now);
    /// Tells it to leave when it has answered what it was asked.
    void dismiss(SteadyTime now);

  private:
    struct Asked {
        Ticket ticket;
        std::string method;
        std::string params;
        SteadyTime since;
        bool isTakenOver = false;
    };
    void ask(Asked asked, SteadyTime now);
    std::chrono::milliseconds timeout() const;

    ExtensionChannel channel_;
    Timeouts timeouts_;
    SteadyTime lastHeard_;
    bool isLeaving_ = false;
    std::map<std::int64_t, Asked> asked_;
};

} // namespace host
