// When a tile is asked for next, by the wall clock.
//
// An answer says when to ask again. After a failure the wait is 5 s, then twice as long each time, at most 5 min. Dates
// are whole seconds, so that tiles that were asked for together are due together. Pure.
#pragma once

#include "Platform/Foundation/Date.h"

namespace host {

class TileSchedule {
  public:
    static constexpr double minWait = 5;
    static constexpr double maxWaitAfterFailure = 300;

    /// Due at once.
    explicit TileSchedule(platform::Date now) : due_(now), lastAsked_(now) {}

    platform::Date due() const { return due_; }
    /// Failures since the last answer.
    int failures() const { return failures_; }

    /// A reload date in the past or nearer than `minWait` is taken for that.
    void answered(platform::Date now, platform::Date reload);
    void failed(platform::Date now);
    /// Due at `now`, whatever the date was.
    void askAt(platform::Date now) { due_ = now; }
    /// Due at once if the clock was set back beyond the last time the tile was asked for: its dates mean nothing then.
    void clockChanged(platform::Date now);

  private:
    platform::Date due_;
    platform::Date lastAsked_;
    int failures_ = 0;
};

} // namespace host
