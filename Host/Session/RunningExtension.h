// An extension's process while it runs, and which tiles wait for what.
//
// It has deadlines by the steady clock: silence while something is awaited ends it, and so does having nothing to do.
#pragma once

#include "Host/Connection/ExtensionChannel.h"
#include "Host/Session/Tile.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace host {

using SteadyTime = std::chrono::steady_clock::time_point;

/// How long is waited for what.
struct Patience {
    /// For an extension that says nothing while it is awaited.
    std::chrono::milliseconds silence{60'000};
    /// For more to do, after the last answer.
    std::chrono::milliseconds idleness{5'000};
    /// For an extension to leave when its input has ended.
    std::chrono::milliseconds leaving{500};
};

class RunningExtension {
  public:
    RunningExtension(ExtensionChannel channel, const Patience& patience, SteadyTime now);

    /// Sends a request; the answer comes under `ticket`.
    void ask(std::string_view method, std::string_view params, Ticket ticket, SteadyTime now);

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
    /// Whether the next request is to go to a process of its own: this one was told to leave.
    bool isLeaving() const { return isLeaving_; }

    /// Something came from the extension.
    void heard(SteadyTime now) { lastHeard_ = now; }
    /// When `expire` has something to do.
    SteadyTime deadline() const;
    /// Tells it to leave, or makes it, as the deadline has it.
    void expire(SteadyTime now);
    /// Tells it to leave.
    void dismiss(SteadyTime now);

  private:
    struct Asked {
        Ticket ticket;
        SteadyTime since;
    };

    ExtensionChannel channel_;
    Patience patience_;
    SteadyTime lastHeard_;
    bool isLeaving_ = false;
    std::map<std::int64_t, Asked> asked_;
};

} // namespace host
