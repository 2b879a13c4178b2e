#include "Host/Session/Explanation.h"

#include "Platform/Foundation/Calendar.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <cmath>
#include <ctime>

namespace host {
namespace {

using platform::Date;

/// "2026-03-16 10:42:03, 5 min ago"
std::string moment(Date date, Date now) {
    const double distance = date.secondsSinceReferenceDate - now.secondsSinceReferenceDate;
    const double seconds = std::round(std::fabs(distance));
    constexpr double minute = 60;
    constexpr double hour = 3600;
    constexpr double twoDays = 172'800;
    std::string far = fmt::format("{:.0f} s", seconds);
    if (seconds >= twoDays) {
        far = fmt::format("{:.0f} days", seconds / (24 * hour));
    } else if (seconds >= 2 * hour) {
        far = fmt::format("{:.0f} h", seconds / hour);
    } else if (seconds >= 2 * minute) {
        far = fmt::format("{:.0f} min", seconds / minute);
    }
    const auto local = static_cast<std::time_t>(std::floor(platform::localTime(date).unixTime()));
    return fmt::format("{:%Y-%m-%d %H:%M:%S}, {}{}{}", fmt::gmtime(local), distance > 0 ? "in " : "", far,
                       distance > 0 ? "" : " ago");
}

std::string duration(double seconds) {
    constexpr double millisecondsPerSecond = 1000;
    return seconds < 1 ? fmt::format("{:.0f} ms", std::ceil(seconds * millisecondsPerSecond))
                       : fmt::format("{:.1f} s", seconds);
}

} // namespace

std::string explanation(const Tile& tile, Date now) {
    const Instance& instance = tile.instance();
    std::string text =
        fmt::format("{} {} of {}, {}\n", instance.id, instance.kind, instance.extension, instance.family);
    for (const auto& [name, choice] : instance.configuration) {
        text += fmt::format("  set to:        {}={}\n", name, choice);
    }
    const Entry* entry = tile.entry();
    text += fmt::format("  shows:         {}\n",
                        entry != nullptr ? "the entry of " + moment(entry->date, now) : "a placeholder");
    for (const std::string& path : tile.watches()) {
        text += fmt::format("  follows:       {}\n", path);
    }
    const TileHistory& history = tile.history();
    text += fmt::format("  last reloaded: {}\n", history.lastSuccess
                                                     ? fmt::format("{}, in {}", moment(history.lastSuccess->date, now),
                                                                   duration(history.lastSuccess->seconds))
                                                     : "never");
    if (!history.reason.empty()) {
        text += fmt::format("  reason:        {}\n", history.reason);
    }
    if (history.lastFailure) {
        text += fmt::format("  failed:        {}, {} in a row\n", moment(history.lastFailure->date, now),
                            tile.schedule().failures());
        text += fmt::format("  because:       {}\n", history.lastFailure->message);
    }
    text += fmt::format("  next try:      {}\n", tile.awaited() ? "under way" : moment(tile.schedule().due(), now));
    return text;
}

} // namespace host
