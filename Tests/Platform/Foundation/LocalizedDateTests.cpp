// How dates are written, judged by ICU itself in every locale that it has.

#include "Platform/Foundation/LocalizedDate.h"

#include "Platform/Foundation/TimeLocale.h"

#include <gtest/gtest.h>
#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <cstdlib>
#include <memory>

namespace platform {
namespace {

TEST(LocalizedDate, ReadsAsPeopleWriteIt) {
    const std::pair<const char*, const char*> rows[]{
        {"", "Mar 6, 2025"},
        {"en_US", "Mar 6, 2025"},
        {"en_GB", "6 Mar 2025"},
        {"de_DE", "6. März 2025"},
        {"de", "6. März 2025"},
        {"fr_FR", "6 mars 2025"},
        {"ja_JP", "2025年3月6日"},
        {"zh_TW", "2025年3月6日"},
        {"ar_EG", "٦ مارس ٢٠٢٥"},
        {"th_TH", "6 มี.ค. 2568"},
        {"xx_YY", "Mar 6, 2025"},
        {"pt_BR", "6 de mar. de 2025"},
        {"bg_BG", "6.03.2025\u202Fг."},
    };
    for (const auto& [locale, expected] : rows) {
        const UserCalendar calendar({.name = locale, .calendar = ""});
        const Date noon = *fromRfc3339("2025-03-06T12:00:00Z");
        EXPECT_EQ(formatted(calendar.dayOf(noon), datePatternOf(locale)), expected) << locale;
    }
}

TEST(LocalizedDate, IsThatOfIcuInEveryLocale) {
    std::int32_t count = 0;
    const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
    ASSERT_GT(count, 500);
    setenv("TZ", "UTC", 1);
    for (std::int32_t i = 0; i < count; ++i) {
        UErrorCode error = U_ZERO_ERROR;
        const std::unique_ptr<icu::DateTimePatternGenerator> generator(
            icu::DateTimePatternGenerator::createInstance(locales[i], error));
        icu::SimpleDateFormat format(generator->getBestPattern(u"yMMMd", error), locales[i], error);
        format.adoptTimeZone(icu::TimeZone::createTimeZone(u"UTC"));
        ASSERT_TRUE(U_SUCCESS(error));
        const UserCalendar calendar({.name = locales[i].getName(), .calendar = ""});
        const DatePattern pattern = datePatternOf(locales[i].getName());
        // A day in each month of about every calendar, one and two digits long.
        for (int day = 0; day < 24; ++day) {
            const Date date = fromRfc3339("2024-01-03T12:00:00Z")->addingSeconds(day * 17.0 * 86400);
            icu::UnicodeString expected;
            std::string judged;
            format.format(date.unixTime() * 1000, expected).toUTF8String(judged);
            ASSERT_EQ(formatted(calendar.dayOf(date), pattern), judged) << locales[i].getName() << ' ' << day;
        }
    }
    unsetenv("TZ");
}

TEST(LocalizedDate, FollowsTheEnvironment) {
    setenv("TZ", "Pacific/Auckland", 1);
    const Date date = *fromRfc3339("2025-03-16T12:00:00Z");
    EXPECT_EQ(localizedDate(date), "Mar 17, 2025");
    setenv("LC_TIME", "de_DE.UTF-8", 1);
    EXPECT_EQ(localizedDate(date), "17. März 2025");
    unsetenv("LC_TIME");
    unsetenv("TZ");
}

} // namespace
} // namespace platform
