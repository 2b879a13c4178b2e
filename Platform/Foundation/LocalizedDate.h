// Dates as the user's locale writes them.
#pragma once

#include "Platform/Foundation/Calendar.h"
#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/DatePattern.h"

#include <string>

namespace platform {

/// `day`, one of the pattern's calendar, as the pattern has it: "Mar 16, 2025".
std::string formatted(const CalendarDay& day, const DatePattern& pattern);

/// The day of `date` with its month's abbreviated name, by the locale, calendar and time zone of the environment.
std::string localizedDate(Date date);

} // namespace platform
