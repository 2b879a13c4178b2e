// Moments as the user's locale writes them: by the locale, calendar and time zone of the environment. Any thread.
//
// ICU writes them; without it the forms are those of ISO 8601.
#pragma once

#include "Platform/Foundation/Date.h"

#include <string>
#include <string_view>

namespace platform {

/// Returns the day with its month's abbreviated name: "Mar 16, 2025".
std::string localizedDate(Date date);

/// Returns the time of day: "9:41 AM", "09:41".
std::string localizedTime(Date date);

/// Returns ICU's name of a locale that the environment calls `name`: "de_AT" for "de_AT.UTF-8", "sr_Latn_RS" for
/// "sr_RS@latin", "en_US@calendar=buddhist" for itself; "en_US" for "C", "POSIX" and an empty name.
std::string timeLocale(std::string_view name);

/// Returns ICU's name of the first of LC_ALL, LC_TIME and LANG that is not empty.
std::string timeLocaleOfEnvironment();

} // namespace platform
