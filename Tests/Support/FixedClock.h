// A clock that stands still.
#pragma once

#include "Platform/Foundation/Clock.h"

namespace platform {

class FixedClock final : public Clock {
  public:
    explicit FixedClock(Date now = {}) : now_(now) {}
    Date now() const override { return now_; }

  private:
    Date now_;
};

} // namespace platform
