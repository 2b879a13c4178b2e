// The dates of feeds, as in RFC 822 with four-digit years: "Tue, 04 Mar 2025 09:30:00 +0100".
//
// White space (see WhiteSpace.h) of any length is between the parts, before and after the date. Weekday and month are
// English, with three letters or in full, in any case. Any weekday is accepted. Numbers may have fewer or more digits.
// The year is not completed: 25 is the year 25.
//
// Zones, letters in any case:
//   +0100  -01:00  +01  +1                 an offset, east positive
//   GMT  UTC  UT  Z                        Greenwich
//   GMT+1  GMT+01:30  UTC-1:30  UT+0130    Greenwich and an offset (after GMT not in more than two digits)
//
// Days and times out of range are errors: hour 24, second 60, February the 31st. Days before 1582-10-15 are those of
// the Julian calendar.
#pragma once

#include "Platform/Foundation/Date.h"

#include <optional>
#include <string_view>

namespace foliovault {

/// Returns nothing for other texts. Any thread.
std::optional<platform::Date> parseFeedDate(std::string_view text);

} // namespace foliovault
