// One placed widget, as the session keeps it: what is asked for, what came, and how that went.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"
#include "Host/Session/TileSchedule.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
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
    /// What made it be asked for last, in a few words.
    std::string reason;
};

/// Names one request of one tile among all of a session.
enum class Ticket : std::uint64_t {};

using SteadyTime = std::chrono::steady_clock::time_point;

class Tile {
  public:
    /// Between two requests for changes of files: at most four a second, and as after any failure while they fail.
    static constexpr std::chrono::milliseconds minReloadInterval{250};
    static constexpr std::chrono::seconds minIntervalAfterFailure{5};
    /// Answers that are passed over in a row because their files were being written.
    static constexpr int maxDiscarded = 8;

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
    /// When it is to be asked for because a file has changed; nothing while it is awaited.
    std::optional<SteadyTime> fileDeadline() const { return awaited_ ? std::nullopt : fileDeadline_; }
    bool isDue(platform::Date date, SteadyTime time) const;

    /// The files that the entries were made from, as absolute paths.
    const std::set<std::string>& watches() const { return watches_; }

    /// Puts the instance in place of the one of the same id. If that shows something else, it is asked for at once;
    /// what is shown stays until the answer comes.
    void change(Instance instance, platform::Date now);
    /// Asks again at once: an answer that is under way may be older than what the user has just done.
    void reload(platform::Date now, std::string reason);
    /// Asks again for a file that has changed, after the answer that is under way.
    void fileChanged(const std::string& path, SteadyTime now);
    /// What it was made from may have changed while the machine slept.
    void clockChanged(platform::Date now);

    void asked(Ticket ticket, SteadyTime now);
    void answered(Timeline timeline, std::set<std::string> watches, platform::Date now, double seconds);
    /// Passes over an answer whose files were being written meanwhile; false if one must be taken at last.
    bool discard(const Timeline& timeline, platform::Date now);
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
    std::set<std::string> watches_;
    std::optional<SteadyTime> fileDeadline_;
    SteadyTime lastAsked_;
    int discarded_ = 0;
    /// What it is due for.
    std::string reason_ = "it was placed";
};

} // namespace host
