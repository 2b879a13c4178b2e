// One placed widget, as the session keeps it: what is asked for, what came, and how that went.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"
#include "Host/Session/TileSchedule.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// Why there is no answer.
struct NoAnswer {
    enum class Cause {
        /// The extension could not be started.
        notStarted,
        /// It ended, fell silent, or said what made no sense at all, and was given up.
        lost,
        /// It refused, or its answer makes no sense.
        unusable,
    };
    Cause cause = Cause::lost;
    /// One clear line, for those who look into it.
    std::string reason;
};

/// How a tile's last reload went, and its last good one.
struct TileHistory {
    struct Success {
        platform::Date date;
        double seconds = 0;
    };
    struct Failure {
        platform::Date date;
        NoAnswer why;
    };
    std::optional<Success> lastSuccess;
    /// Since the last success.
    std::optional<Failure> lastFailure;
};

/// Names one request of one tile among all of a session.
enum class Ticket : std::uint64_t {};

class Tile {
  public:
    Tile(Instance instance, platform::Date now) : instance_(std::move(instance)), schedule_(now) {}

    const Instance& instance() const { return instance_; }
    const TileSchedule& schedule() const { return schedule_; }
    const TileHistory& history() const { return history_; }
    /// The request under way whose answer counts.
    std::optional<Ticket> awaited() const { return awaited_; }

    /// What to show now: of the last timeline the last entry that applies already. Nothing before the first answer.
    const Entry* entry() const { return entries_.empty() ? nullptr : &entries_[current_]; }
    /// When the next entry applies, or the tile is due; nothing while it is awaited.
    std::optional<platform::Date> nextEvent() const;

    /// Puts the instance in place of the one of the same id. If that shows something else, it is asked for at once;
    /// what is shown stays until the answer comes.
    void change(Instance instance, platform::Date now);
    /// Asks again at once: an answer that is under way may be older than what the user has just done.
    void reload(platform::Date now);
    void clockChanged(platform::Date now) { schedule_.clockChanged(now); }

    void asked(Ticket ticket) { awaited_ = ticket; }
    void answered(Timeline timeline, platform::Date now, double seconds);
    void failed(NoAnswer why, platform::Date now);

    /// Goes on to the entry that applies at `now`; whether what is to be shown is another view than before, which
    /// counts as seen then.
    bool advance(platform::Date now);

  private:
    Instance instance_;
    TileSchedule schedule_;
    TileHistory history_;
    std::vector<Entry> entries_;
    std::size_t current_ = 0;
    std::optional<Entry> seen_;
    std::optional<Ticket> awaited_;
};

} // namespace host
