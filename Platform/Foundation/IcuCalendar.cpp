#include "Platform/Foundation/IcuCalendar.h"

#include "Platform/Foundation/IcuName.h"
#include "Platform/Foundation/LazyLibrary.h"

#include <memory>
#include <unicode/ucal.h>

namespace platform {
namespace {

constinit LazyLibrary internationalLibrary("libicui18n.so." U_ICU_VERSION_SHORT);

struct CalendarFunctions {
    decltype(&::ucal_open) open = nullptr;
    decltype(&::ucal_close) close = nullptr;
    decltype(&::ucal_setMillis) setMillis = nullptr;
    decltype(&::ucal_get) get = nullptr;
};

const CalendarFunctions* calendarFunctions() {
    static const auto functions = [] {
        CalendarFunctions found;
        const bool isComplete = internationalLibrary.find(ICU_NAME(ucal_open), found.open) &&
                                internationalLibrary.find(ICU_NAME(ucal_close), found.close) &&
                                internationalLibrary.find(ICU_NAME(ucal_setMillis), found.setMillis) &&
                                internationalLibrary.find(ICU_NAME(ucal_get), found.get);
        return isComplete ? std::optional(found) : std::nullopt;
    }();
    return functions ? &*functions : nullptr;
}

} // namespace

std::optional<CalendarDay> dayInCalendar(const CalendarDay& day, const std::string& calendar) {
    const CalendarFunctions* icu = calendarFunctions();
    const auto noon = dateFromCivilTime({.year = static_cast<int>(day.year),
                                         .month = static_cast<int>(day.month),
                                         .day = static_cast<int>(day.day),
                                         .hour = 12});
    if (icu == nullptr || !noon) {
        return std::nullopt;
    }
    constexpr double millisecondsPerSecond = 1000;
    const std::string locale = "en@calendar=" + calendar;
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UCalendar, decltype(icu->close)> opened(
        icu->open(u"Etc/UTC", -1, locale.c_str(), UCAL_DEFAULT, &error), icu->close);
    icu->setMillis(opened.get(), noon->unixTime() * millisecondsPerSecond, &error);
    const CalendarDay converted{.year = icu->get(opened.get(), UCAL_YEAR, &error),
                                .month = icu->get(opened.get(), UCAL_MONTH, &error) + 1,
                                .day = icu->get(opened.get(), UCAL_DATE, &error)};
    return U_SUCCESS(error) ? std::optional(converted) : std::nullopt;
}

} // namespace platform
