// When a tile is requested next, by the wall clock.
//
// A response has the date of the next request. After a failure the wait is 5 s, then twice as long each time, up to
// 5 min. Dates are whole seconds, so that tiles that were requested together are due together. Pure.
#pragma once

#include "Platform/Foundation/Date.h"

namespace host {

class TileSchedule {
  public:
    static constexpr double minWait = 5;
    static constexpr double maxWaitAfterFailure = 300;

    /// Makes it due at once.
    explicit TileSchedule(platform::Date now) : due_(now), lastRequest_(now) {}

    platform::Date due() const { return due_; }
    /// Failures since the last response.
    int failures() const { return failures_; }

    /// Uses `minWait` instead of a reload date that is nearer or in the past.
    void answered(platform::Date now, platform::Date reload);
    void failed(platform::Date now);
    /// Makes it due at `now`.
    void scheduleAt(platform::Date now) { due_ = now; }
    /// Makes it due at once if the clock was set back before the last request, so that its dates mean nothing.
    void clockChanged(platform::Date now);

  private:
    platform::Date due_;
    platform::Date lastRequest_;
    int failures_ = 0;
};

} // namespace host
