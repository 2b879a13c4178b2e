#include "Host/Desktop/ClockTime.h"

#include "Platform/Foundation/Calendar.h"
#include "Platform/Foundation/LocalizedDate.h"

namespace host {

std::string shortMoment(platform::Date date, platform::Date now) {
    const bool isToday = platform::localDayNumber(date) == platform::localDayNumber(now);
    return isToday ? platform::localizedTime(date) : platform::localizedDate(date);
}

} // namespace host
