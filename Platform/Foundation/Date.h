// A moment, as seconds since the reference date 2001-01-01 00:00:00 UTC, the epoch of property lists and of the
// extension's own files.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct Date {
    double secondsSinceReferenceDate = 0;

    /// Stands for an unknown date: 0001-01-01 00:00:00 UTC of the Julian calendar, two days before that date of the
    /// Gregorian calendar.
    static constexpr Date distantPast() { return {-63'114'076'800.0}; }

    /// Converts seconds since 1970-01-01 00:00:00 UTC.
    static constexpr Date fromUnixTime(double seconds) { return {seconds - unixTimeOfReferenceDate}; }
    constexpr double unixTime() const { return secondsSinceReferenceDate + unixTimeOfReferenceDate; }

    constexpr Date addingSeconds(double seconds) const { return {secondsSinceReferenceDate + seconds}; }

    friend constexpr auto operator<=>(const Date&, const Date&) = default;

    static constexpr double unixTimeOfReferenceDate = 978'307'200.0;
};

/// Writes RFC 3339 in UTC, rounded to milliseconds: "2026-03-16T09:30:00.000Z". Clamps to the years 1 to 9999; NaN
/// becomes the beginning of year 1.
std::string toRfc3339(Date date);

/// Reads RFC 3339 with any fraction of seconds and any offset. Returns nothing for other texts, and for a leap second
/// (":60"), which seconds since the reference date cannot express.
std::optional<Date> fromRfc3339(std::string_view text);

/// A day and time in UTC of the proleptic Gregorian calendar. Days and times out of range, such as February the 30th,
/// hour 24 and second 60, have no date.
struct CivilTime {
    int year = 1;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};
std::optional<Date> dateFromCivilTime(const CivilTime& time);

} // namespace platform
