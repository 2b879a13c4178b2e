// The folder on a machine without ICU.

#include "Platform/Foundation/Calendar.h"
#include "Platform/Foundation/CaseInsensitiveSearch.h"
#include "Platform/Foundation/Icu.h"
#include "Platform/Foundation/LazyLibrary.h"
#include "Platform/Foundation/LocalizedDate.h"
#include "Platform/Foundation/URL.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {
int loads = 0;
}

/// Takes the dynamic linker's place: no library can be loaded.
extern "C" void* dlopen(const char* /*fileName*/, int /*mode*/) {
    ++loads;
    return nullptr;
}

namespace platform {
namespace {

TEST(WithoutIcu, HostsAndSearchesAreAscii) {
    EXPECT_FALSE(URL::parse("http://bücher.de"));
    EXPECT_TRUE(URL::parse("http://h/bücher"));
    EXPECT_TRUE(caseInsensitiveContains("Große GRUPPE", "große gruppe", CaseFolding::standard));
    EXPECT_FALSE(caseInsensitiveContains("ÄPFEL", "äpfel", CaseFolding::standard));
}

TEST(WithoutIcu, DaysAreGregorianAndWrittenAsNumbers) {
    setenv("TZ", "Asia/Tokyo", 1);
    setenv("LC_ALL", "th_TH", 1);
    const Date date = *fromRfc3339("2025-03-05T22:04:59Z");
    EXPECT_EQ(UserCalendar("th_TH").dayOf(date), (CalendarDay{2025, 3, 6}));
    EXPECT_EQ(localizedDate(date), "2025-03-06");
    EXPECT_EQ(localizedTime(date), "07:04");
    for (const double seconds : {-1e300, 1e300}) {
        EXPECT_NE(localizedDate({seconds}), "");
    }
    unsetenv("LC_ALL");
    unsetenv("TZ");
}

TEST(WithoutIcu, LoadingIsTriedOnce) {
    EXPECT_EQ(Icu::shared(), nullptr);
    EXPECT_EQ(IcuDates::shared(), nullptr);
    LazyLibrary library("libabsent.so.1");
    loads = 0;
    for (int attempt = 0; attempt < 2; ++attempt) {
        int (*function)(int) = [](int number) { return number; };
        EXPECT_FALSE(library.find("function", function));
        EXPECT_EQ(function, nullptr);
    }
    EXPECT_EQ(loads, 1);
}

} // namespace
} // namespace platform
