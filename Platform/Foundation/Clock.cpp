#include "Platform/Foundation/Clock.h"

#include <chrono>

namespace platform {

Date SystemClock::now() const {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromUnixTime(std::chrono::duration<double>(sinceEpoch).count());
}

const SystemClock& SystemClock::shared() {
    static const SystemClock clock;
    return clock;
}

} // namespace platform
