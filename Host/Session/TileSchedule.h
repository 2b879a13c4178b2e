// When a tile is asked for next, by the wall clock.
//
// An answer says when to ask again; a failure is tried again after 5 s, then after twice as long each time, at most
// after 5 min. Dates are whole seconds, so that tiles that were asked for together are due together. Pure.
#pragma once

#include "Platform/Foundation/Date.h"

namespace host {

class TileSchedule {
  public:
    static constexpr double shortestWait = 5;
    static constexpr double longestWaitAfterFailure = 300;

    /// Due at once.
    explicit TileSchedule(platform::Date now) : due_(now), lastAsked_(now) {}

    platform::Date due() const { return due_; }
    /// Failures since the last answer.
    int failures() const { return failures_; }

    /// A reload date in the past or nearer than the shortest wait is taken for that.
    void answered(platform::Date now, platform::Date reload);
    void failed(platform::Date now);
    /// Somebody does not want to wait.
    void askAt(platform::Date now) { due_ = now; }
    /// The clock was set: back beyond the last time the tile was asked for, its dates mean nothing any more.
    void clockChanged(platform::Date now);

  private:
    platform::Date due_;
    platform::Date lastAsked_;
    int failures_ = 0;
};

} // namespace host
