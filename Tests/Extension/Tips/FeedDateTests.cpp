#include "Extension/Tips/FeedDate.h"

#include <gtest/gtest.h>
#include <unicode/smpdtfmt.h>

#include <array>
#include <memory>
#include <random>
#include <regex>
#include <string>

namespace foliovault {
namespace {

using platform::Date;

/// Reads a date by ICU, not leniently, with blanks only at the end of the text.
std::optional<Date> readByIcu(const std::string& text) {
    static const auto format = [] {
        UErrorCode error = U_ZERO_ERROR;
        auto made = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString("EEE, d MMM yyyy H:m:s Z"),
                                                            icu::Locale("en_US_POSIX"), error);
        made->setLenient(0);
        // For a text without a zone.
        made->setTimeZone(*icu::TimeZone::getGMT());
        return made;
    }();
    icu::UnicodeString wide = icu::UnicodeString::fromUTF8(text);
    while (!wide.isEmpty() && u_isUWhiteSpace(wide.charAt(wide.length() - 1)) != 0) {
        wide.truncate(wide.length() - 1);
    }
    icu::ParsePosition position(0);
    const double milliseconds = format->parse(wide, position);
    const bool isWhole = position.getErrorIndex() < 0 && position.getIndex() == wide.length() && !wide.isEmpty();
    return isWhole ? std::optional(Date::fromUnixTime(milliseconds / 1000)) : std::nullopt;
}

TEST(FeedDate, IsReadOrRefused) {
    constexpr double tuesday = 1'741'077'000; // 2025-03-04 08:30:00 UTC
    const std::pair<std::string_view, double> rows[]{
        {"Tue, 04 Mar 2025 09:30:00 +0100", tuesday},
        {"Tue, 4 Mar 2025 9:3:1 +0100", tuesday - 1619},
        {"Sun, 04 Mar 2025 09:30:00 +0100", tuesday},
        {"tuesday, 04 MARCH 2025 09:30:00 +0100", tuesday},
        {" Tue,\t04  Mar\n2025\u00A0 09:30:00   +0100 \n", tuesday},
        {"Tue, 04 Mar 2025 09:30:00 +01:00", tuesday},
        {"Tue, 04 Mar 2025 09:30:00 GMT+1", tuesday},
        // Not 2025.
        {"Tue, 04 Mar 25 09:30:00 GMT", -61'372'996'200},
        {"Sat, 01 Jan 0001 00:00:00 GMT", Date::distantPast().unixTime()},
    };
    for (const auto& [text, unixTime] : rows) {
        EXPECT_EQ(parseFeedDate(text), Date::fromUnixTime(unixTime)) << text;
    }
    const auto expectRefused = [](const auto&... texts) {
        for (const std::string_view text : {std::string_view(texts)...}) {
            EXPECT_EQ(parseFeedDate(text), std::nullopt) << text;
        }
    };
    // ICU accepts the last six. No feed has them.
    expectRefused("", "04 Mar 2025 09:30:00 +0100", "Tue 04 Mar 2025 09:30:00 +0100", "Tue, 04 Mar 2025 09:30:00 EST",
                  "Tue, 04 Mar 2025 09:30:00.5 +0100", "Tue, 04 Mar 0 09:30:00 +0100",
                  "Tue, 4e0 Mar 2025 09:30:00 +0100", "Tue, 04 Mar 2025 -0:30:00 +0100",
                  "Tue, 04 Mar 4294969321 09:30:00 +0100", "Tue, ٠٤ Mar 2025 09:30:00 +0100",
                  "Tue, 04 Auguſt 2025 09:30:00 +0100", "Tue, 04 Mar 40000 09:30:00 +0100");
}

/// Makes dates as feeds write them, and others that differ a little.
class Generator {
  public:
    std::string date() {
        std::string text = oneOf("Mon", "Wed", "Sun", "sun", "SATURDAY", "Wednesday", "Th", "Tues") + "," + gap() +
                           number(0, 32) + gap() + oneOf("Jan", "Feb", "Apr", "oct", "Dec", "MARCH", "Sept", "M") +
                           gap() + year() + gap() + number(0, 25) + ":" + number(0, 61) + ":" + number(0, 61) + gap() +
                           zone();
        for (int changes = below(4) - 1; changes > 0; --changes) {
            const auto at = static_cast<std::size_t>(below(static_cast<int>(text.size())));
            text.replace(at, below(2) != 0 ? 1 : 0,
                         oneOf("0", "1", "7", " ", ":", ",", "+", "-", "M", "t", "Z", "", ""));
        }
        return text;
    }

  private:
    int below(int count) { return std::uniform_int_distribution(0, count - 1)(source_); }
    std::string oneOf(const auto&... choices) {
        const std::array<const char*, sizeof...(choices)> all{choices...};
        return all[static_cast<std::size_t>(below(sizeof...(choices)))];
    }
    std::string gap() { return below(8) != 0 ? " " : oneOf("", "  ", "\t", "\u00A0", "\u2003 ", "\u200B", "\n"); }
    std::string number(int min, int max) {
        const std::string digits = std::to_string(min + below(max - min + 1));
        return digits.size() < 2 && below(3) != 0 ? "0" + digits : digits;
    }
    std::string year() { return below(4) != 0 ? number(1, 2200) : number(1570, 1590); }
    std::string zone() {
        if (below(3) != 0) {
            return oneOf("+", "-") + number(0, 25) + oneOf("", ":", "") + number(0, 61);
        }
        return oneOf("GMT", "UTC", "UT", "Z", "gmt", "EST", "", "Zulu") +
               (below(2) != 0 ? "" : oneOf("+", "-", "0", ":") + number(0, 30)) +
               (below(3) != 0 ? "" : oneOf(":30", ":5", "30", ":30:15"));
    }

    std::mt19937 source_{7};
};

/// What ICU reads and no feed has: weekdays of fewer letters, offsets with seconds or of three, five and six digits,
/// and numbers with an exponent or a sign.
bool isOfOtherForm(const std::string& text) {
    static const std::regex other("\\s*[A-Za-z]{1,2},[^]*|[^]*[-+](\\d{3}|\\d{5,6}|\\d{1,2}:\\d{2}:\\d{2})\\s*|"
                                  "[^]*\\d[eE][^]*|[^]*-\\d[^]*[-+A-Za-z][^]*");
    return std::regex_match(text, other);
}

TEST(FeedDate, IsReadAsIcuReadsIt) {
    Generator generator;
    int readable = 0;
    int refused = 0;
    for (int count = 0; count < 20'000; ++count) {
        const std::string text = generator.date();
        const std::optional<Date> expected = readByIcu(text);
        if (expected && (isOfOtherForm(text) || expected->unixTime() > 9e11)) {
            continue;
        }
        ++(expected ? readable : refused);
        ASSERT_EQ(parseFeedDate(text), expected) << text;
    }
    EXPECT_GT(readable, 2'000);
    EXPECT_GT(refused, 3'000);
}

} // namespace
} // namespace foliovault
