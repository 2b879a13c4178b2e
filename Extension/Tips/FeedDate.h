// The dates of feeds, as RFC 822 has them with four-digit years: "Tue, 04 Mar 2025 09:30:00 +0100".
//
// A weekday, a comma, the day, the month, the year, hours, minutes, seconds and the zone; white space (see
// WhiteSpace.h) of any length between them, before and after all. Weekday and month are English, by three letters or in
// full, in any case; which weekday it is does not matter. Numbers may have fewer or more digits. The year is taken as
// it stands: 25 is the year 25.
//
// Zones, letters in any case:
//   +0100  -01:00  +01  +1                 an offset, east positive
//   GMT  UTC  UT  Z                        Greenwich
//   GMT+1  GMT+01:30  UTC-1:30  UT+0130    Greenwich and an offset (after GMT not in more than two digits)
//
// Days and times out of range are no dates: hour 24, second 60, February the 31st. Days before 1582-10-15
// are of the Julian calendar, which was in use then, as the distant past is.
#pragma once

#include "Platform/Foundation/Date.h"

#include <optional>
#include <string_view>

namespace foliovault {

/// Any thread.
std::optional<platform::Date> parseFeedDate(std::string_view text);

} // namespace foliovault
