// One placed widget, as the session keeps it: what is asked for, what came, and how that went.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/EventSource.h"
#include "Host/Connection/Messages.h"
#include "Host/Session/TileSchedule.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// Why a reload failed.
struct TileFailure {
    enum class Cause {
        notStarted,
        /// The extension ended, or was killed because it was silent or broke the protocol.
        stopped,
        /// It refused the request, or its response makes no sense.
        invalidResponse,
    };
    platform::Date date;
    Cause cause = Cause::stopped;
    /// One clear line, for those who look into it.
    std::string message;
};

/// How a tile's last reload went, and its last good one.
struct TileHistory {
    struct Success {
        platform::Date date;
        double seconds = 0;
    };
    std::optional<Success> lastSuccess;
    /// Since the last success.
    std::optional<TileFailure> lastFailure;
    /// Why it was asked for last, in a few words.
    std::string reason;
};

/// One request among all of a session.
enum class RequestId : std::uint64_t {};

class Tile {
  public:
    /// Between two requests for changes of files: at most four a second, and as after any failure while they fail.
    static constexpr std::chrono::milliseconds minReloadInterval{250};
    static constexpr std::chrono::seconds minIntervalAfterFailure{5};
    /// Answers in a row that are discarded because their files were being written.
    static constexpr int maxDiscarded = 8;

    Tile(Instance instance, platform::Date now) : instance_(std::move(instance)), schedule_(now) {}

    const Instance& instance() const { return instance_; }
    const TileSchedule& schedule() const { return schedule_; }
    const TileHistory& history() const { return history_; }
    /// The request under way whose answer counts.
    std::optional<RequestId> awaited() const { return awaited_; }
    SteadyTime lastAsked() const { return lastAsked_; }

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

    void asked(RequestId request, SteadyTime now);
    void answered(Timeline timeline, std::set<std::string> watches, platform::Date now, double seconds);
    /// Discards an answer whose files were being written meanwhile; false if it is one too many, and must be taken.
    bool discard(const Timeline& timeline, platform::Date now);
    void failed(TileFailure failure);

    /// Goes on to the entry that applies at `now`. Returns whether its view, or where a click goes, differs from what
    /// it was after the call before.
    bool advance(platform::Date now);

  private:
    Instance instance_;
    TileSchedule schedule_;
    TileHistory history_;
    std::vector<Entry> entries_;
    std::size_t current_ = 0;
    std::optional<Entry> seen_;
    std::optional<RequestId> awaited_;
    std::set<std::string> watches_;
    std::optional<SteadyTime> fileDeadline_;
    SteadyTime lastAsked_;
    int discarded_ = 0;
    /// Why it is due.
    std::string reason_ = "it was placed";
};

} // namespace host
