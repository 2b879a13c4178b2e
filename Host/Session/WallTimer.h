// A timer by the wall clock, as a descriptor.
//
// The descriptor becomes readable when the wall clock reaches the date: by time, by being set, or while the machine
// slept. It also becomes readable when the clock is set to another time.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <optional>

namespace host {

class WallTimer {
  public:
    WallTimer();

    int descriptor() const { return timer_.get(); }

    /// Replaces the date; without one, only a clock that is set makes it readable.
    void set(std::optional<platform::Date> date);

    /// Returns what made it readable, and makes it unreadable again.
    enum class Event { none, expired, clockSet };
    Event take();

  private:
    platform::FileDescriptor timer_;
    std::optional<platform::Date> date_;
};

} // namespace host
