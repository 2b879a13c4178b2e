#include "Platform/Foundation/Calendar.h"

#include "Platform/Foundation/LocalizedDate.h"
#include "Platform/Foundation/TimeLocale.h"

#include <gtest/gtest.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

#include <cstdlib>
#include <memory>

namespace platform {
namespace {

/// A time zone for as long as this lives.
class Zone {
  public:
    explicit Zone(const char* name) { setenv("TZ", name, 1); }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;
    ~Zone() { unsetenv("TZ"); }
};

TEST(UserCalendar, FindsTheNextMidnightWhateverClocksDo) {
    const std::tuple<const char*, const char*, const char*> rows[]{
        {"UTC", "2026-03-16T23:59:00Z", "2026-03-17T00:00:00.000Z"},
        {"Asia/Kathmandu", "2026-03-16T18:14:59Z", "2026-03-16T18:15:00.000Z"},
        {"Europe/Berlin", "2026-03-28T23:30:00Z", "2026-03-29T22:00:00.000Z"},
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
        {"Nowhere/AtAll", "2026-03-16T23:59:00Z", "2026-03-17T00:00:00.000Z"},
    };
    for (const auto& [name, now, expected] : rows) {
        const Zone zone(name);
        const auto start = UserCalendar("en_US").startOfNextDay(*fromRfc3339(now));
        EXPECT_EQ(toRfc3339(start.value()), expected) << name << ' ' << now;
    }
}

TEST(UserCalendar, CountsDaysAsTheLocaleDoesAndTheZoneHasIt) {
    const std::tuple<const char*, const char*, const char*, CalendarDay> rows[]{
        {"", "UTC", "2025-03-16T12:00:00Z", {2025, 3, 16}},
        {"en_US", "America/New_York", "2025-03-16T03:59:59Z", {2025, 3, 15}},
        {"th_TH", "Asia/Bangkok", "2024-12-31T17:00:00Z", {2568, 1, 1}},
        {"en_US@calendar=buddhist", "UTC", "2025-03-16T12:00:00Z", {2568, 3, 16}},
        {"th_TH@calendar=gregorian", "UTC", "2025-03-16T12:00:00Z", {2025, 3, 16}},
        {"fa_IR", "Asia/Tehran", "2025-03-20T20:30:00Z", {1404, 1, 1}},
        {"de_DE@euro", "UTC", "1969-12-31T23:59:59.5Z", {1969, 12, 31}},
    };
    for (const auto& [locale, name, now, expected] : rows) {
        const Zone zone(name);
        EXPECT_EQ(UserCalendar(timeLocale(locale)).dayOf(*fromRfc3339(now)), expected) << locale;
    }
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
    const std::tuple<const char*, const char*, const char*, const char*> environments[]{
        {"", "", "en_GB", "en_GB"}, {"", "de_DE", "en_GB", "de_DE"}, {"C", "de_DE", "en_GB", "en_US"}};
    for (const auto& [all, time, language, expected] : environments) {
        setenv("LC_ALL", all, 1);
        setenv("LC_TIME", time, 1);
        setenv("LANG", language, 1);
        EXPECT_EQ(timeLocaleOfEnvironment(), expected);
    }
    for (const char* variable : {"LANG", "LC_TIME", "LC_ALL"}) {
        unsetenv(variable);
    }
}

constexpr const char* moment = "2025-03-06T23:30:00Z";

TEST(LocalizedDate, ReadsAsPeopleWriteIt) {
    const std::tuple<const char*, const char*, const char*> rows[]{
        {"C", "UTC", "Mar 6, 2025"},
        {"de_DE.UTF-8@euro", "CET-1CEST,M3.5.0,M10.5.0/3", "7. März 2025"},
        {"xx_YY", "EST5EDT,M3.2.0,M11.1.0", "Mar 6, 2025"},
    };
    for (const auto& [locale, name, expected] : rows) {
        setenv("LC_ALL", locale, 1);
        const Zone zone(name);
        EXPECT_EQ(localizedDate(*fromRfc3339(moment)), expected) << locale;
        // By the calendar of that time.
        EXPECT_EQ(locale[0] == 'C' ? localizedDate(Date::distantPast()) : "Jan 1, 1", "Jan 1, 1");
    }
}

TEST(LocalizedDate, IsThatOfTheInstalledIcu) {
    for (const char* locale : {"de_AT", "sr_Latn_RS", "ar_EG", "ko_KR", "en_US@calendar=buddhist"}) {
        setenv("LC_ALL", locale, 1);
        const Zone zone("Asia/Kathmandu");
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
    unsetenv("LC_ALL");
}

} // namespace
} // namespace platform
