// A clock that moves when it is set.
#pragma once

#include "Platform/Foundation/Clock.h"

namespace platform {

class FixedClock final : public Clock {
  public:
    explicit FixedClock(Date now = {}) : now_(now) {}
    Date now() const override { return now_; }

    void set(Date now) { now_ = now; }
    void advance(double seconds) { now_ = now_.addingSeconds(seconds); }

  private:
    Date now_;
};

} // namespace platform
