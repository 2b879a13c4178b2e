// Days as the user counts them, as an effect that is handed in.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/TimeLocale.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace platform {

struct CalendarDay {
    std::int64_t year = 0;
    /// From 1; the place of the month among the year's months.
    std::int64_t month = 0;
    std::int64_t day = 0;
    friend bool operator==(const CalendarDay&, const CalendarDay&) = default;
};

class Calendar {
  public:
    virtual ~Calendar() = default;
    /// The day on which `date` falls. Any thread.
    virtual CalendarDay dayOf(Date date) const = 0;
    /// The first moment of the day after that of `date`: local midnight, or where clocks skip that, the first moment
    /// after. Nothing if there is none within two days. Any thread.
    virtual std::optional<Date> startOfNextDay(Date date) const = 0;
};

/// The calendar of a locale in the time zone of the process (TZ, else the system's).
///
/// Zones are the C library's, whatever form TZ has. Calendars other than the Gregorian one (of the time since 1582, and
/// as if it had always been) are ICU's, which is loaded for them; a machine without it counts days by the Gregorian.
class UserCalendar final : public Calendar {
  public:
    explicit UserCalendar(TimeLocale locale) : locale_(std::move(locale)) {}

    CalendarDay dayOf(Date date) const override;
    std::optional<Date> startOfNextDay(Date date) const override;

    /// That of the environment's locale.
    static const UserCalendar& shared();

  private:
    TimeLocale locale_;
};

} // namespace platform
