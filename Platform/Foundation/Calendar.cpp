#include "Platform/Foundation/Calendar.h"

#include "Platform/Foundation/DatePattern.h"
#include "Platform/Foundation/IcuCalendar.h"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace platform {
namespace {

constexpr double secondsPerHour = 3600;

/// The Gregorian day in the process's time zone.
CalendarDay localDay(Date date) {
    // Far beyond all calendars the C library has no answer.
    constexpr double farthest = 1e14;
    const auto time = static_cast<std::time_t>(std::clamp(std::floor(date.unixTime()), -farthest, farthest));
    std::tm parts{};
    localtime_r(&time, &parts);
    return {.year = std::int64_t{parts.tm_year} + 1900, .month = parts.tm_mon + 1, .day = parts.tm_mday};
}

} // namespace

CalendarDay UserCalendar::dayOf(Date date) const {
    const std::string calendar =
        locale_.calendar.empty() ? std::string(datePatternOf(locale_.name).calendar) : locale_.calendar;
    tzset();
    const CalendarDay day = localDay(date);
    return calendar == "gregorian" ? day : dayInCalendar(day, calendar).value_or(day);
}

std::optional<Date> UserCalendar::startOfNextDay(Date date) const {
    // Looked for, not computed: zones skip midnights, and have skipped whole days.
    constexpr int hoursToLook = 49;
    tzset();
    const CalendarDay today = localDay(date);
    Date before{std::floor(date.secondsSinceReferenceDate)};
    Date after = before;
    for (int hour = 0; localDay(after) == today; ++hour) {
        if (hour == hoursToLook) {
            return std::nullopt;
        }
        before = after;
        after = after.addingSeconds(secondsPerHour);
    }
    while (after.secondsSinceReferenceDate - before.secondsSinceReferenceDate > 1) {
        const double half = std::floor((after.secondsSinceReferenceDate - before.secondsSinceReferenceDate) / 2);
        const Date middle = before.addingSeconds(half);
        (localDay(middle) == today ? before : after) = middle;
    }
    return after;
}

const UserCalendar& UserCalendar::shared() {
    static const UserCalendar calendar(timeLocaleOfEnvironment());
    return calendar;
}

} // namespace platform
