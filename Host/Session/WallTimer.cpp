#include "Host/Session/WallTimer.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <sys/timerfd.h>
#include <unistd.h>

namespace host {
namespace {

/// The year 3000. A timer that is off would not notice that the clock is set.
constexpr double never = 32'503'680'000.0;

} // namespace

WallTimer::WallTimer() : timer_(timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {
    set(std::nullopt);
}

void WallTimer::set(std::optional<platform::Date> date) {
    date_ = date;
    constexpr double nanosecondsPerSecond = 1e9;
    // A time of 0 would switch the timer off. Any time in the past does the same as 1.
    const double moment = std::fmin(std::fmax(date ? date->unixTime() : never, 1), never);
    const double seconds = std::floor(moment);
    itimerspec once{};
    once.it_value = {.tv_sec = static_cast<std::time_t>(seconds),
                     .tv_nsec = static_cast<long>((moment - seconds) * nanosecondsPerSecond)};
    timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &once, nullptr);
}

WallTimer::Event WallTimer::take() {
    std::uint64_t times = 0;
    if (read(timer_.get(), &times, sizeof times) == sizeof times) {
        return Event::expired;
    }
    if (errno == ECANCELED) {
        set(date_);
        return Event::clockSet;
    }
    return Event::none;
}

} // namespace host
