// Days as the user counts them, as an effect that is handed in.
#pragma once

#include "Platform/Foundation/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// The moment when clocks in UTC show what those in the time zone of the process (TZ, else the system's) show at
/// `date`. Zones are the C library's, in every form of TZ. Any thread.
Date localTime(Date date);

/// The day that this is by local time, in days since 1970-01-01. Any thread.
double localDayNumber(Date date);

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
    /// after. Nothing if it is more than two days away. Any thread.
    virtual std::optional<Date> startOfNextDay(Date date) const = 0;
};

/// The calendar of a locale, in the time zone of the process.
///
/// Calendars are ICU's, which is loaded for `dayOf`; a machine without it counts days by the Gregorian calendar.
class UserCalendar final : public Calendar {
  public:
    /// `locale` by its name in ICU: "th_TH", "en_US@calendar=buddhist".
    explicit UserCalendar(std::string locale) : locale_(std::move(locale)) {}

    CalendarDay dayOf(Date date) const override;
    std::optional<Date> startOfNextDay(Date date) const override;

    /// That of the environment's locale.
    static const UserCalendar& shared();

  private:
    std::string locale_;
};

} // namespace platform
