// Calendars other than the Gregorian, by ICU, which is loaded at the first use.
#pragma once

#include "Platform/Foundation/Calendar.h"

#include <optional>
#include <string>

namespace platform {

/// What `calendar` (by its name in ICU, "buddhist") calls the Gregorian day `day`; nothing where there is no ICU. A
/// name that ICU does not know stands for the Gregorian calendar. Any thread.
std::optional<CalendarDay> dayInCalendar(const CalendarDay& day, const std::string& calendar);

} // namespace platform
