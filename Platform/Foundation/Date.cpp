#include "Platform/Foundation/Date.h"

#include "Platform/Foundation/AsciiSet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace platform {

namespace {

using namespace std::chrono;
using Milliseconds = sys_time<milliseconds>;

constexpr sys_days referenceDay = year{2001} / 1 / 1;
constexpr Milliseconds firstWritten = sys_days{year{1} / 1 / 1};
constexpr Milliseconds lastWritten = sys_days{year{9999} / 12 / 31} + days{1} - milliseconds{1};

Milliseconds toMilliseconds(Date date) {
    const double fromReference = std::round(date.secondsSinceReferenceDate * 1000);
    // Compared before the conversion, which is undefined for values that no integer holds. NaN fails the first
    // comparison.
    if (!(fromReference >= static_cast<double>((firstWritten - referenceDay).count()))) {
        return firstWritten;
    }
    if (fromReference > static_cast<double>((lastWritten - referenceDay).count())) {
        return lastWritten;
    }
    return referenceDay + milliseconds{static_cast<std::int64_t>(fromReference)};
}

/// Reads "2001-01-31T23:59:59"; returns nothing for any other text.
std::optional<CivilTime> civilTime(std::string_view text) {
    constexpr std::string_view pattern = "0000-00-00T00:00:00";
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        const bool isGood = index < text.size() &&
                            (isDigit(pattern[index]) ? isDigit(text[index])
                                                     : asciiLowerCased(text[index]) == asciiLowerCased(pattern[index]));
        if (!isGood) {
            return std::nullopt;
        }
    }
    const auto pair = [text](std::size_t index) { return (text[index] - '0') * 10 + text[index + 1] - '0'; };
    return text.size() == pattern.size() ? std::optional(CivilTime{.year = pair(0) * 100 + pair(2),
                                                                   .month = pair(5),
                                                                   .day = pair(8),
                                                                   .hour = pair(11),
                                                                   .minute = pair(14),
                                                                   .second = pair(17)})
                                         : std::nullopt;
}

/// Reads "Z" or an offset like "+01:00". Returns seconds east of UTC.
std::optional<int> zoneOffset(std::string_view text) {
    if (text == "Z" || text == "z") {
        return 0;
    }
    const bool hasSign = text.starts_with('+') || text.starts_with('-');
    // An offset has the form of a time of day.
    const auto time = hasSign ? civilTime("0001-01-01T" + std::string(text.substr(1)) + ":00") : std::nullopt;
    if (!time || time->hour > 23 || time->minute > 59) {
        return std::nullopt;
    }
    const int offset = time->hour * 3600 + time->minute * 60;
    return text.front() == '-' ? -offset : offset;
}

} // namespace

std::string toRfc3339(Date date) {
    const Milliseconds moment = toMilliseconds(date);
    const auto startOfDay = floor<days>(moment);
    const year_month_day day{startOfDay};
    const hh_mm_ss time{moment - startOfDay};
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int{day.year()},
                                     unsigned{day.month()}, unsigned{day.day()}, static_cast<int>(time.hours().count()),
                                     static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                                     static_cast<int>(time.subseconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::optional<Date> fromRfc3339(std::string_view text) {
    constexpr std::size_t timeSize = 19;
    const std::optional<CivilTime> time = civilTime(text.substr(0, timeSize));
    const std::optional<Date> local = time ? dateFromCivilTime(*time) : std::nullopt;
    if (!local) {
        return std::nullopt;
    }
    std::string_view rest = text.substr(timeSize);
    double fraction = 0;
    if (rest.starts_with('.')) {
        const std::size_t end = std::min(rest.find_first_not_of("0123456789", 1), rest.size());
        if (end == 1) {
            return std::nullopt;
        }
        // A fraction that is out of range is too small to matter and stays 0.
        std::from_chars(rest.data(), rest.data() + end, fraction, std::chars_format::fixed);
        rest.remove_prefix(end);
    }
    const std::optional<int> offset = zoneOffset(rest);
    return offset ? std::optional(local->addingSeconds(-*offset).addingSeconds(fraction)) : std::nullopt;
}

std::optional<Date> dateFromCivilTime(const CivilTime& time) {
    const auto isWithin = [](int value, int min, int max) { return value >= min && value <= max; };
    // The conversions below would wrap: chrono has bytes for months and days, and 16 bits for years.
    if (!isWithin(time.year, -32767, 32767) || !isWithin(time.month, 1, 12) || !isWithin(time.day, 1, 31) ||
        !isWithin(time.hour, 0, 23) || !isWithin(time.minute, 0, 59) || !isWithin(time.second, 0, 59)) {
        return std::nullopt;
    }
    const year_month_day day{year{time.year}, month{static_cast<unsigned>(time.month)},
                             std::chrono::day{static_cast<unsigned>(time.day)}};
    if (!day.ok()) {
        return std::nullopt;
    }
    const auto fromReference =
        sys_days{day} - referenceDay + hours{time.hour} + minutes{time.minute} + seconds{time.second};
    return Date{static_cast<double>(fromReference.count())};
}

} // namespace platform
