#include "Extension/Tips/FeedDate.h"

#include <gtest/gtest.h>

#include <string>

namespace foliovault {
namespace {

using platform::Date;

TEST(FeedDate, IsReadOrRefused) {
    constexpr double tuesday = 1'741'077'000; // 2025-03-04 08:30:00 UTC
    const std::pair<std::string_view, double> rows[]{
        {"Tue, 04 Mar 2025 09:30:00 +0100", tuesday},
        {"Tue, 4 Mar 2025 9:3:1 +0100", tuesday - 1619},
        {"Sun, 04 Mar 2025 09:30:00 +0100", tuesday},
        {"tuesday, 04 MARCH 2025 09:30:00 +0100", tuesday},
        {" Tue,\t04  Mar\n2025\u00A0 09:\n30: 00   +0100 \n", tuesday},
        // Zones.
        {"Tue, 04 Mar 2025 09:30:00 +01:00", tuesday},
        {"Tue, 04 Mar 2025 09:30:00 +1", tuesday},
        {"Mon, 03 Mar 2025 08:31:00 -2359", tuesday},
        {"Wed, 05 Mar 2025 08:29:00 +23:59", tuesday},
        {"Tue, 04 Mar 2025 08:30:00 z", tuesday},
        {"Tue, 04 Mar 2025 08:30:00 UT", tuesday},
        {"Tue, 04 Mar 2025 09:30:00 GMT+1", tuesday},
        {"Tue, 04 Mar 2025 07:00:00 UTC-1:30", tuesday},
        // Days of the Julian calendar, and the first of the Gregorian one.
        {"Fri, 15 Oct 1582 00:00:00 GMT", -12'219'292'800},
        {"Thu, 04 Oct 1582 00:00:00 GMT", -12'219'379'200},
        {"Sat, 29 Feb 1500 00:00:00 GMT", -14'825'894'400},
        // Not 2025.
        {"Tue, 04 Mar 25 09:30:00 GMT", -61'372'996'200},
        {"Sat, 01 Jan 0001 00:00:00 GMT", Date::distantPast().unixTime()},
    };
    for (const auto& [text, unixTime] : rows) {
        EXPECT_EQ(parseFeedDate(text), Date::fromUnixTime(unixTime)) << text;
    }
    EXPECT_EQ(parseFeedDate(""), std::nullopt);
    const auto expectRefused = [](std::string_view part, const auto&... replacements) {
        for (const std::string_view by : {std::string_view(replacements)...}) {
            std::string text = "Tue, 04 Mar 2025 09:30:00 +0100";
            text.replace(text.find(part), part.size(), by);
            EXPECT_EQ(parseFeedDate(text), std::nullopt) << text;
        }
    };
    expectRefused("Tue, ", "", "Tu, ", "Tues, ", "Tue ", "Tue,", "Tue , ");
    expectRefused("04 ", "00 ", "32 ", "4e0 ", "٠٤ ", "04", "29 Feb 2025 00:00:00 Z ");
    expectRefused("04 Mar", "29 Feb", "31 Apr", "04 Ma", "04 Sept", "04 Auguſt", "04 Mar,");
    expectRefused("2025", "0", "-1", "40000", "4294969321");
    expectRefused(" 2025 ", "2025 ", " 2025");
    expectRefused("09:30:00 ", "24:30:00 ", "-0:30:00 ", "09 :30:00 ", "09:60:00 ", "09:30 ", "09:30:60 ",
                  "09:30:00.5 ", "09:30:00");
    expectRefused("+0100", "", "0100", "*0100", "EST", "EST+1", "Z+1", "GMT+0100", "GMT +1", "GMT+1:5", "+", "+010",
                  "+01000", "+2400", "+0160", "+01:60", "+1:00", "+01:0", "+01:000", "+0100:00", "+0100 +");
}

} // namespace
} // namespace foliovault
