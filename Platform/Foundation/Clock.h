// The time of day, as an effect that is handed in.
#pragma once

#include "Platform/Foundation/Date.h"

namespace platform {

class Clock {
  public:
    virtual ~Clock() = default;
    /// Now, by the wall clock. Any thread.
    virtual Date now() const = 0;
};

/// The system's own clock.
class SystemClock final : public Clock {
  public:
    Date now() const override;
    static const SystemClock& shared();
};

} // namespace platform
