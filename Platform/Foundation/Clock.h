// The time of day, as an effect that is passed in.
#pragma once

#include "Platform/Foundation/Date.h"

#include <chrono>

namespace platform {

class Clock {
  public:
    virtual ~Clock() = default;
    /// Returns the time of the wall clock. Any thread.
    virtual Date now() const = 0;
};

/// The system's own clock.
class SystemClock final : public Clock {
  public:
    Date now() const override {
        const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return Date::fromUnixTime(std::chrono::duration<double>(sinceEpoch).count());
    }
    static const SystemClock& shared() {
        static const SystemClock clock;
        return clock;
    }
};

} // namespace platform
