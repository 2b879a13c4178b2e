// One alarm by the wall clock.
//
// A descriptor that becomes readable when the wall clock reads a date or more, however it comes to that: by time, by
// being set, or because the machine has slept meanwhile. It becomes readable too when the clock is set otherwise.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <optional>

namespace host {

class WallTimer {
  public:
    WallTimer();

    int descriptor() const { return timer_.get(); }

    /// In place of the date before; never, without one.
    void set(std::optional<platform::Date> date);

    /// What made it readable, which it is not any more.
    enum class Event { none, expired, clockSet };
    Event take();

  private:
    platform::FileDescriptor timer_;
    std::optional<platform::Date> date_;
};

} // namespace host
