// Moments as the user's locale writes them: by the locale, calendar and time zone of the environment. Any thread.
//
// ICU writes them; without it the forms are those of ISO 8601.
#pragma once

#include "Platform/Foundation/Date.h"

#include <string>

namespace platform {

/// The day with its month's abbreviated name: "Mar 16, 2025".
std::string localizedDate(Date date);

/// The time of day: "9:41 AM", "09:41".
std::string localizedTime(Date date);

} // namespace platform
