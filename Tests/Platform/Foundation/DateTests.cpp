#include "Platform/Foundation/Calendar.h"

#include "Platform/Foundation/LocalizedDate.h"

#include <gtest/gtest.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>
#include <random>

namespace platform {
namespace {

TEST(Date, WritesRfc3339) {
    const std::pair<double, std::string> dates[]{
        {0.0004, "2001-01-01T00:00:00.000Z"},
        {0.0006, "2001-01-01T00:00:00.001Z"},
        {-0.0006, "2000-12-31T23:59:59.999Z"},
        {-63113904000.001, "0001-01-01T00:00:00.000Z"},
        {252423993599.9999, "9999-12-31T23:59:59.999Z"},
        {-std::numeric_limits<double>::infinity(), "0001-01-01T00:00:00.000Z"},
        {std::numeric_limits<double>::quiet_NaN(), "0001-01-01T00:00:00.000Z"},
    };
    for (const auto& [seconds, text] : dates) {
        EXPECT_EQ(toRfc3339({seconds}), text) << seconds;
    }
}

TEST(Date, ReadsRfc3339) {
    const std::pair<std::string, double> dates[]{
        {"2001-01-01t00:00:00z", 0},
        {"2001-01-01T00:00:00.123456789012345678901234567890Z", 0.12345678901234568},
        {"2001-01-01T00:00:00.0" + std::string(400, '0') + "1Z", 0},
        {"2001-01-01T01:30:00+01:30", 0},
        {"2000-12-31T18:00:00.25-06:00", 0.25},
        {"2001-01-01T23:59:59+23:59", 59},
        {"0000-01-01T00:00:00Z", -63145526400},
    };
    for (const auto& [text, seconds] : dates) {
        const auto date = fromRfc3339(text);
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(date->secondsSinceReferenceDate, seconds) << text;
    }
    const auto expectRefused = [](const auto&... texts) {
        for (const char* text : {texts...}) {
            EXPECT_FALSE(fromRfc3339(text)) << text;
        }
    };
    expectRefused("", "2001-01-01", "2001-01-01T00:00:00", "2001-01-01T00:00Z", "2001-01-01 00:00:00Z",
                  "2001-01-01T00:00:00.Z", "2001-01-01T00:00:00,5Z", "2001-01-01T00:00:00+0100",
                  "2001-01-01T00:00:00+24:00", "2001-01-01T00:00:00+01:60", "2001-01-01T00:00:00*01:00",
                  "2001-01-01T24:00:00Z", "2001-01-01T00:60:00Z", "2016-12-31T23:59:60Z", "1900-02-29T00:00:00Z",
                  "2001-00-01T00:00:00Z", "2001-13-01T00:00:00Z", "2001-01-00T00:00:00Z", "2001-1-01T00:00:00Z",
                  "02001-01-01T00:00:00Z", "-001-01-01T00:00:00Z", "2001-01-01T00:00:00Z ", " 2001-01-01T00:00:00Z",
                  "2001-01-01T00:00:00ZZ");
}

/// The C library's calendar is the reference.
TEST(Date, AgreesWithTheSystemCalendar) {
    std::mt19937_64 random(1);
    std::uniform_int_distribution<std::int64_t> seconds(-62135596800, 253402300799);
    for (int round = 0; round < 20000; ++round) {
        const time_t unixTime = seconds(random);
        std::tm parts{};
        gmtime_r(&unixTime, &parts);
        std::array<char, 32> expected{};
        strftime(expected.data(), expected.size(), "%Y-%m-%dT%H:%M:%S.000Z", &parts);
        // This library writes years before 1000 without leading zeros.
        const std::string padded = std::string(24 - std::string(expected.data()).size(), '0') + expected.data();
        const Date date = Date::fromUnixTime(static_cast<double>(unixTime));
        ASSERT_EQ(toRfc3339(date), padded);
        ASSERT_EQ(fromRfc3339(padded), date) << padded;
        ASSERT_EQ(dateFromCivilTime({parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                                     parts.tm_sec}),
                  date);
    }
}

TEST(UserCalendar, FindsTheNextMidnightWhateverClocksDo) {
    const std::tuple<const char*, const char*, const char*> rows[]{
        {"Asia/Kathmandu", "2026-03-16T18:14:59Z", "2026-03-16T18:15:00.000Z"},
        {"Europe/Berlin", "2026-10-24T23:00:00Z", "2026-10-25T23:00:00.000Z"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2026-03-28T23:30:00Z", "2026-03-29T22:00:00.000Z"},
        // Midnight was skipped, and the day began at one o'clock.
        {"Asia/Beirut", "2021-03-27T12:00:00Z", "2021-03-27T22:00:00.000Z"},
        // At midnight clocks went back, so that the day had one hour more.
        {"America/Sao_Paulo", "2018-02-18T01:30:00Z", "2018-02-18T03:00:00.000Z"},
        // Midnight came twice.
        {"America/Havana", "2018-11-04T03:30:00Z", "2018-11-04T04:00:00.000Z"},
        {"America/Havana", "2018-11-04T04:30:00Z", "2018-11-05T05:00:00.000Z"},
        // A whole day was skipped.
        {"Pacific/Apia", "2011-12-30T05:00:00Z", "2011-12-30T10:00:00.000Z"},
    };
    for (const auto& [name, now, expected] : rows) {
        setenv("TZ", name, 1);
        const auto start = UserCalendar("en_US").startOfNextDay(*fromRfc3339(now));
        EXPECT_EQ(toRfc3339(start.value()), expected) << name << ' ' << now;
    }
    unsetenv("TZ");
}

TEST(UserCalendar, CountsDaysAsTheLocaleDoesAndTheZoneHasIt) {
    const std::tuple<const char*, const char*, const char*, CalendarDay> rows[]{
        {"en_US", "America/New_York", "2025-03-16T03:59:59Z", {2025, 3, 15}},
        {"th_TH", "Asia/Bangkok", "2024-12-31T17:00:00Z", {2568, 1, 1}},
        {"en_US@calendar=buddhist", "UTC", "2025-03-16T12:00:00Z", {2568, 3, 16}},
        {"fa_IR", "Asia/Tehran", "2025-03-20T20:30:00Z", {1404, 1, 1}},
    };
    for (const auto& [locale, name, now, expected] : rows) {
        setenv("TZ", name, 1);
        EXPECT_EQ(UserCalendar(timeLocale(locale)).dayOf(*fromRfc3339(now)), expected) << locale;
    }
    unsetenv("TZ");
}

TEST(UserCalendar, TakesEveryDate) {
    const UserCalendar calendar("th_TH");
    for (const double seconds : {-1e300, -1e17, Date::distantPast().secondsSinceReferenceDate, 1e17, 1e300}) {
        calendar.dayOf({seconds});
        const auto start = calendar.startOfNextDay({seconds});
        EXPECT_TRUE(!start || start->secondsSinceReferenceDate > seconds) << seconds;
    }
}

TEST(TimeLocale, IsReadFromNamesOfEnvironments) {
    const std::pair<const char*, const char*> rows[]{
        {"de_AT.UTF-8", "de_AT"}, {"de-AT", "de_AT"},      {"sr_RS.UTF-8@latin", "sr_Latn_RS"},
        {"sr@latin", "sr_Latn"},  {"de_DE@euro", "de_DE"}, {"en_US.UTF-8@calendar=buddhist", "en_US@calendar=buddhist"},
        {"C", "en_US"},           {"C.UTF-8", "en_US"},    {"POSIX", "en_US"},
        {"@", "en_US"},           {"", "en_US"},
    };
    for (const auto& [name, expected] : rows) {
        EXPECT_EQ(timeLocale(name), expected) << name;
    }
    // An empty variable counts as one that is not set.
    std::string expected = "en_US";
    for (const char* variable : {"LANG", "LC_TIME", "LC_ALL"}) {
        setenv(variable, "", 1);
        EXPECT_EQ(timeLocaleOfEnvironment(), expected);
        setenv(variable, variable, 1);
        expected = variable;
        EXPECT_EQ(timeLocaleOfEnvironment(), expected);
    }
    for (const char* variable : {"LANG", "LC_TIME", "LC_ALL"}) {
        unsetenv(variable);
    }
}

constexpr const char* moment = "2025-03-06T23:30:00Z";

TEST(LocalizedDate, IsThatOfTheInstalledIcu) {
    for (const char* locale : {"de_AT", "sr_Latn_RS", "ar_EG", "ko_KR", "en_US@calendar=buddhist"}) {
        setenv("LC_ALL", locale, 1);
        setenv("TZ", "Asia/Kathmandu", 1);
        const auto byIcu = [locale](const char* skeleton) {
            UErrorCode error = U_ZERO_ERROR;
            const std::unique_ptr<icu::DateFormat> format(
                icu::DateFormat::createInstanceForSkeleton(skeleton, icu::Locale(locale), error));
            EXPECT_TRUE(U_SUCCESS(error)) << locale;
            format->adoptTimeZone(icu::TimeZone::createTimeZone("Asia/Kathmandu"));
            icu::UnicodeString text;
            std::string utf8;
            return format->format(fromRfc3339(moment)->unixTime() * 1000, text).toUTF8String(utf8);
        };
        EXPECT_EQ(localizedDate(*fromRfc3339(moment)), byIcu("yMMMd")) << locale;
        EXPECT_EQ(localizedTime(*fromRfc3339(moment)), byIcu("jm")) << locale;
    }
    setenv("LC_ALL", "xx_YY", 1);
    // In English, by the calendar of that time.
    EXPECT_EQ(localizedDate(Date::distantPast()), "Jan 1, 1");
    unsetenv("LC_ALL");
    unsetenv("TZ");
}

} // namespace
} // namespace platform
