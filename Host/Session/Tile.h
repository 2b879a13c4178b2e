// One placed widget in a session: its entries, its schedule, and the history of its requests.
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
        /// It refused the request, or its response is invalid.
        invalidResponse,
    };
    platform::Date date;
    Cause cause = Cause::stopped;
    /// One line.
    std::string message;
};

/// The results of a tile's last reloads.
struct TileHistory {
    struct Success {
        platform::Date date;
        double seconds = 0;
    };
    std::optional<Success> lastSuccess;
    /// Since the last success.
    std::optional<TileFailure> lastFailure;
    /// The reason of the last request, in a few words.
    std::string reason;
};

/// Identifies a request within a session.
enum class RequestId : std::uint64_t {};

class Tile {
  public:
    /// Between two requests because of changed files.
    static constexpr std::chrono::milliseconds minReloadInterval{250};
    static constexpr std::chrono::seconds minIntervalAfterFailure{5};
    /// Responses in a row that are discarded because their files were being written.
    static constexpr int maxDiscarded = 8;

    Tile(Instance instance, platform::Date now) : instance_(std::move(instance)), schedule_(now) {}

    const Instance& instance() const { return instance_; }
    const TileSchedule& schedule() const { return schedule_; }
    const TileHistory& history() const { return history_; }
    /// The request whose response counts, while it is awaited.
    std::optional<RequestId> awaited() const { return awaited_; }
    SteadyTime lastRequestTime() const { return lastRequestTime_; }

    /// The entry to show now; null before the first response.
    const Entry* entry() const { return entries_.empty() ? nullptr : &entries_[current_]; }
    /// When the next entry applies, or the tile is due unless a response is awaited; whichever comes first.
    std::optional<platform::Date> nextEvent() const;
    /// When it is due because a file has changed; nothing while a response is awaited.
    std::optional<SteadyTime> fileDeadline() const { return awaited_ ? std::nullopt : fileDeadline_; }
    bool isDue(platform::Date date, SteadyTime time) const;

    /// The files that the entries were made from, as absolute paths.
    const std::set<std::string>& watches() const { return watches_; }

    /// Replaces the instance, which has the same id. If it shows something else, the tile is due at once; its entry
    /// stays until the response comes.
    void change(Instance instance, platform::Date now);
    /// Makes it due at once. A response that is awaited does not count any more, since it may be outdated.
    void reload(platform::Date now, std::string reason);
    /// Makes it due because a file has changed, after the response that is awaited.
    void fileChanged(const std::string& path, SteadyTime now);
    /// Makes it due if it follows files, which may have changed while the machine slept.
    void clockChanged(platform::Date now);

    void requested(RequestId request, SteadyTime now);
    void answered(Timeline timeline, std::set<std::string> watches, platform::Date now, double seconds);
    /// Discards a response whose files were being written. Returns false if it must be used: there is no entry yet, or
    /// `maxDiscarded` were discarded in a row.
    bool discard(const Timeline& timeline, platform::Date now);
    void failed(TileFailure failure);

    /// Selects the entry that applies at `now`. Returns whether its view or its link differs from what it was after the
    /// call before.
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
    SteadyTime lastRequestTime_;
    int discarded_ = 0;
    /// The reason of the next request.
    std::string reason_ = "it was placed";
};

} // namespace host
