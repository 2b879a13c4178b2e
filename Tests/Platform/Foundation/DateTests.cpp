#include "Platform/Foundation/Date.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <ctime>
#include <limits>
#include <random>

namespace platform {
namespace {

TEST(Date, WritesRfc3339) {
    const std::pair<double, std::string> dates[]{
        {795346200, "2026-03-16T09:30:00.000Z"},
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

TEST(Date, RefusesCivilTimesOutOfRange) {
    constexpr int max = std::numeric_limits<int>::max();
    for (const CivilTime& time : {CivilTime{2025, 257, 1}, CivilTime{2025, 1, 257}, CivilTime{2025, 1, 1, -1},
                                  CivilTime{65536 + 2025, 1, 1}, CivilTime{2025, 1, 1, max, max, max}}) {
        EXPECT_FALSE(dateFromCivilTime(time)) << time.year << ' ' << time.month << ' ' << time.day << ' ' << time.hour;
    }
}

} // namespace
} // namespace platform
