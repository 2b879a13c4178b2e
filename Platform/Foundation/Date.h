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

    /// What an unknown date becomes: 0001-01-01 00:00:00 UTC by the calendar of that time, the Julian one, and so two
    /// days before the first day of this header's Gregorian calendar.
    static constexpr Date distantPast() { return {-63'114'076'800.0}; }

    /// From seconds since 1970-01-01 00:00:00 UTC.
    static constexpr Date fromUnixTime(double seconds) { return {seconds - unixTimeOfReferenceDate}; }
    constexpr double unixTime() const { return secondsSinceReferenceDate + unixTimeOfReferenceDate; }

    constexpr Date addingSeconds(double seconds) const { return {secondsSinceReferenceDate + seconds}; }

    friend constexpr auto operator<=>(const Date&, const Date&) = default;

    static constexpr double unixTimeOfReferenceDate = 978'307'200.0;
};

/// RFC 3339 in UTC with milliseconds, rounded to the nearest: "2026-03-16T09:30:00.000Z". Dates outside the years 1 to
/// 9999 are written as the nearest end of that range, NaN as its beginning.
std::string toRfc3339(Date date);

/// Reads RFC 3339 with any number of second fractions and any offset; nothing if `text` is anything else. Nothing also
/// for a leap second (":60"), which seconds since the reference date cannot express.
std::optional<Date> fromRfc3339(std::string_view text);

/// The moment at which a calendar day and time of the proleptic Gregorian calendar stands in UTC. Nothing for days and
/// times out of range, as February the 30th, hour 24 and second 60.
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
