#include "Host/Desktop/ClockTime.h"

#include "Platform/Foundation/LocalizedDate.h"

#include <array>
#include <cmath>
#include <ctime>
#include <langinfo.h>
#include <string_view>

namespace host {
namespace {

std::tm localParts(platform::Date date) {
    const auto time = static_cast<std::time_t>(std::floor(date.unixTime()));
    std::tm parts{};
    localtime_r(&time, &parts);
    return parts;
}

/// Whether the locale's times of day have a morning and an afternoon.
bool hasHalfDays() {
    const std::string_view format = nl_langinfo(T_FMT); // NOLINT(concurrency-mt-unsafe): nothing here sets locales
    return format.find("%p") != std::string_view::npos || format.find("%r") != std::string_view::npos;
}

} // namespace

std::string shortMoment(platform::Date date, platform::Date now) {
    const std::tm parts = localParts(date);
    const std::tm today = localParts(now);
    if (parts.tm_year != today.tm_year || parts.tm_yday != today.tm_yday) {
        return platform::localizedDate(date);
    }
    std::array<char, 64> text{};
    std::strftime(text.data(), text.size(), hasHalfDays() ? "%I:%M %p" : "%H:%M", &parts);
    return text.data() + (hasHalfDays() && text[0] == '0' ? 1 : 0);
}

} // namespace host
