// Days as the user counts them, as an effect that is passed in.
#pragma once

#include "Platform/Foundation/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// Returns `date` as local time: the moment at which a clock in UTC shows what a clock in the process's time zone (TZ,
/// else the system's) shows at `date`. Zones are those of the C library, in every form of TZ. Any thread.
Date localTime(Date date);

/// Returns the local day of `date`, in days since 1970-01-01. Any thread.
double localDayNumber(Date date);

struct CalendarDay {
    std::int64_t year = 0;
    /// From 1, in the order of the year's months.
    std::int64_t month = 0;
    std::int64_t day = 0;
    friend bool operator==(const CalendarDay&, const CalendarDay&) = default;
};

class Calendar {
  public:
    virtual ~Calendar() = default;
    /// Returns the day of `date`. Any thread.
    virtual CalendarDay dayOf(Date date) const = 0;
    /// Returns the first moment of the day after that of `date`: local midnight, or if clocks skip midnight, the first
    /// moment after it. Returns nothing if that is more than two days away. Any thread.
    virtual std::optional<Date> startOfNextDay(Date date) const = 0;
};

/// The calendar of a locale, in the time zone of the process.
///
/// `dayOf` loads ICU. Without ICU, days are those of the Gregorian calendar.
class UserCalendar final : public Calendar {
  public:
    /// `locale` is a name of ICU: "th_TH", "en_US@calendar=buddhist".
    explicit UserCalendar(std::string locale) : locale_(std::move(locale)) {}

    CalendarDay dayOf(Date date) const override;
    std::optional<Date> startOfNextDay(Date date) const override;

    /// The calendar of the environment's locale.
    static const UserCalendar& shared();

  private:
    std::string locale_;
};

} // namespace platform
