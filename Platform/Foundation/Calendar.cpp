#include "Platform/Foundation/Calendar.h"

#include "Platform/Foundation/Icu.h"
#include "Platform/Foundation/LocalizedDate.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <memory>

namespace platform {
namespace {

std::optional<CalendarDay> dayByIcu(Date local, const std::string& locale) {
    const IcuDates* icu = IcuDates::shared();
    if (icu == nullptr) {
        return std::nullopt;
    }
    constexpr double millisecondsPerSecond = 1000;
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UCalendar, decltype(icu->closeCalendar)> calendar(
        icu->openCalendar(u"Etc/UTC", -1, locale.c_str(), UCAL_DEFAULT, &error), icu->closeCalendar);
    icu->setMillis(calendar.get(), local.unixTime() * millisecondsPerSecond, &error);
    const CalendarDay day{.year = icu->get(calendar.get(), UCAL_YEAR, &error),
                          .month = icu->get(calendar.get(), UCAL_MONTH, &error) + 1,
                          .day = icu->get(calendar.get(), UCAL_DATE, &error)};
    return U_SUCCESS(error) ? std::optional(day) : std::nullopt;
}

CalendarDay gregorianDay(Date local) {
    const auto time = static_cast<std::time_t>(std::floor(local.unixTime()));
    std::tm parts{};
    gmtime_r(&time, &parts);
    return {.year = std::int64_t{parts.tm_year} + 1900, .month = parts.tm_mon + 1, .day = parts.tm_mday};
}

} // namespace

Date localTime(Date date) {
    // The C library fails far beyond all calendars.
    constexpr double maxTime = 1e14;
    const double unixTime = std::clamp(date.unixTime(), -maxTime, maxTime);
    const auto time = static_cast<std::time_t>(std::floor(unixTime));
    std::tm parts{};
    tzset();
    localtime_r(&time, &parts);
    return Date::fromUnixTime(unixTime + static_cast<double>(parts.tm_gmtoff));
}

double localDayNumber(Date date) {
    constexpr double secondsPerDay = 86'400;
    return std::floor(localTime(date).unixTime() / secondsPerDay);
}

CalendarDay UserCalendar::dayOf(Date date) const {
    const Date local = localTime(date);
    const auto day = dayByIcu(local, locale_);
    return day ? *day : gregorianDay(local);
}

std::optional<Date> UserCalendar::startOfNextDay(Date date) const {
    // Searches, since zones skip midnights and have skipped whole days.
    constexpr double secondsPerHour = 3600;
    constexpr int maxHours = 49;
    const double today = localDayNumber(date);
    Date before{std::floor(date.secondsSinceReferenceDate)};
    Date after = before;
    for (int hour = 0; localDayNumber(after) == today; ++hour) {
        if (hour == maxHours) {
            return std::nullopt;
        }
        before = after;
        after = after.addingSeconds(secondsPerHour);
    }
    while (after.secondsSinceReferenceDate - before.secondsSinceReferenceDate > 1) {
        const double half = std::floor((after.secondsSinceReferenceDate - before.secondsSinceReferenceDate) / 2);
        const Date middle = before.addingSeconds(half);
        (localDayNumber(middle) == today ? before : after) = middle;
    }
    return after;
}

const UserCalendar& UserCalendar::shared() {
    static const UserCalendar calendar(timeLocaleOfEnvironment());
    return calendar;
}

} // namespace platform
