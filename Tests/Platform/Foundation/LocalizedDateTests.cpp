// Dates and times, with the installed ICU as the reference, and as all its versions write them.

#include "Platform/Foundation/LocalizedDate.h"

#include <gtest/gtest.h>
#include <unicode/datefmt.h>
#include <unicode/timezone.h>

#include <cstdlib>
#include <memory>

namespace platform {
namespace {

constexpr const char* moment = "2025-03-06T23:30:00Z";

void setEnvironment(const char* locale, const char* zone) {
    setenv("LC_ALL", locale, 1);
    setenv("TZ", zone, 1);
}

TEST(LocalizedDate, ReadsAsPeopleWriteIt) {
    const std::tuple<const char*, const char*, const char*> rows[]{
        {"C", "UTC", "Mar 6, 2025"},
        {"en_US", "EST5EDT,M3.2.0,M11.1.0", "Mar 6, 2025"},
        {"de_DE.UTF-8@euro", "CET-1CEST,M3.5.0,M10.5.0/3", "7. März 2025"},
        {"xx_YY", "UTC", "Mar 6, 2025"},
    };
    for (const auto& [locale, zone, expected] : rows) {
        setEnvironment(locale, zone);
        EXPECT_EQ(localizedDate(*fromRfc3339(moment)), expected) << locale;
    }
    setEnvironment("C", "UTC");
    // By the calendar of that time.
    EXPECT_EQ(localizedDate(Date::distantPast()), "Jan 1, 1");
}

TEST(LocalizedDate, IsThatOfTheIcuThatIsInstalled) {
    const std::pair<const char*, const char*> locales[]{
        {"de_AT.UTF-8", "de_AT"},
        {"sr_RS.UTF-8@latin", "sr_Latn_RS"},
        {"ar_EG.UTF-8", "ar_EG"},
        {"ko_KR.UTF-8", "ko_KR"},
        {"en_US.UTF-8@calendar=buddhist", "en_US@calendar=buddhist"},
    };
    for (const auto& [name, icuName] : locales) {
        setEnvironment(name, "Asia/Kathmandu");
        // Clang before 16 captures no structured bindings.
        const auto expected = [name = name, icuName = icuName](const char* skeleton) {
            UErrorCode error = U_ZERO_ERROR;
            const std::unique_ptr<icu::DateFormat> format(
                icu::DateFormat::createInstanceForSkeleton(skeleton, icu::Locale(icuName), error));
            EXPECT_TRUE(U_SUCCESS(error)) << name;
            format->adoptTimeZone(icu::TimeZone::createTimeZone("Asia/Kathmandu"));
            icu::UnicodeString text;
            std::string utf8;
            return format->format(fromRfc3339(moment)->unixTime() * 1000, text).toUTF8String(utf8);
        };
        EXPECT_EQ(localizedDate(*fromRfc3339(moment)), expected("yMMMd")) << name;
        EXPECT_EQ(localizedTime(*fromRfc3339(moment)), expected("jm")) << name;
    }
}

} // namespace
} // namespace platform
