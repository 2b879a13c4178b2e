#include "Platform/Foundation/Date.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace platform {

namespace {

using namespace std::chrono;
using Milliseconds = sys_time<milliseconds>;

constexpr sys_days referenceDay = year{2001} / 1 / 1;
constexpr Milliseconds firstWritten = sys_days{year{1} / 1 / 1};
constexpr Milliseconds lastWritten = sys_days{year{9999} / 12 / 31} + days{1} - milliseconds{1};

Milliseconds toMilliseconds(Date date) {
    const double fromReference = std::round(date.secondsSinceReferenceDate * 1000);
    // Compared as doubles before the conversion, which is undefined for what no integer holds; NaN fails the first.
    if (!(fromReference >= static_cast<double>((firstWritten - referenceDay).count()))) {
        return firstWritten;
    }
    if (fromReference > static_cast<double>((lastWritten - referenceDay).count())) {
        return lastWritten;
    }
    return referenceDay + milliseconds{static_cast<std::int64_t>(fromReference)};
}

/// Reads a text from its front. Once a step has failed, `ok` stays false.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    /// Exactly `count` decimal digits.
    int digits(std::size_t count) {
        int value = 0;
        for (std::size_t index = 0; index < count; ++index) {
            if (index == rest_.size() || !isDigit(rest_[index])) {
                ok_ = false;
                return 0;
            }
            value = value * 10 + (rest_[index] - '0');
        }
        rest_.remove_prefix(count);
        return value;
    }

    /// The next character if it is one of `characters`, else 0.
    char oneOf(std::string_view characters) {
        if (rest_.empty() || characters.find(rest_.front()) == std::string_view::npos) {
            return 0;
        }
        const char character = rest_.front();
        rest_.remove_prefix(1);
        return character;
    }

    void expectOneOf(std::string_view characters) { ok_ = oneOf(characters) != 0 && ok_; }

    /// A decimal point and any number of digits, or 0 where no point stands.
    double fraction() {
        if (rest_.empty() || rest_.front() != '.') {
            return 0;
        }
        std::size_t end = 1;
        while (end < rest_.size() && isDigit(rest_[end])) {
            ++end;
        }
        double value = 0;
        ok_ = ok_ && end > 1;
        // Out of range means too small to matter: the value stays 0.
        std::from_chars(rest_.data(), rest_.data() + end, value, chars_format::fixed);
        rest_.remove_prefix(end);
        return value;
    }

    bool isAtEnd() const { return ok_ && rest_.empty(); }

  private:
    using chars_format = std::chars_format;
    static bool isDigit(char character) { return character >= '0' && character <= '9'; }
    std::string_view rest_;
    bool ok_ = true;
};

/// "Z" or an offset like "+01:00", in seconds east of UTC.
std::optional<int> zoneOffset(Scanner& scanner) {
    if (scanner.oneOf("Zz") != 0) {
        return 0;
    }
    const char sign = scanner.oneOf("+-");
    const int offsetHours = scanner.digits(2);
    scanner.expectOneOf(":");
    const int offsetMinutes = scanner.digits(2);
    if (sign == 0 || offsetHours > 23 || offsetMinutes > 59) {
        return std::nullopt;
    }
    const int offset = offsetHours * 3600 + offsetMinutes * 60;
    return sign == '-' ? -offset : offset;
}

} // namespace

std::string toRfc3339(Date date) {
    const Milliseconds moment = toMilliseconds(date);
    const auto startOfDay = floor<days>(moment);
    const year_month_day day{startOfDay};
    const hh_mm_ss time{moment - startOfDay};
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int{day.year()},
                                     unsigned{day.month()}, unsigned{day.day()}, static_cast<int>(time.hours().count()),
                                     static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                                     static_cast<int>(time.subseconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::optional<Date> fromRfc3339(std::string_view text) {
    Scanner scanner(text);
    CivilTime time;
    time.year = scanner.digits(4);
    scanner.expectOneOf("-");
    time.month = scanner.digits(2);
    scanner.expectOneOf("-");
    time.day = scanner.digits(2);
    scanner.expectOneOf("Tt");
    time.hour = scanner.digits(2);
    scanner.expectOneOf(":");
    time.minute = scanner.digits(2);
    scanner.expectOneOf(":");
    time.second = scanner.digits(2);
    const double fraction = scanner.fraction();
    const std::optional<int> offset = zoneOffset(scanner);
    const std::optional<Date> local = dateFromCivilTime(time);
    if (!scanner.isAtEnd() || !offset || !local) {
        return std::nullopt;
    }
    return local->addingSeconds(-*offset).addingSeconds(fraction);
}

std::optional<Date> dateFromCivilTime(const CivilTime& time) {
    const auto isWithin = [](int value, int lowest, int highest) { return value >= lowest && value <= highest; };
    // Checked before the conversions, which would wrap: chrono's months and days are bytes, its years 16 bits.
    if (!isWithin(time.year, -32767, 32767) || !isWithin(time.month, 1, 12) || !isWithin(time.day, 1, 31) ||
        !isWithin(time.hour, 0, 23) || !isWithin(time.minute, 0, 59) || !isWithin(time.second, 0, 59)) {
        return std::nullopt;
    }
    const year_month_day day{year{time.year}, month{static_cast<unsigned>(time.month)},
                             std::chrono::day{static_cast<unsigned>(time.day)}};
    if (!day.ok()) {
        return std::nullopt;
    }
    const auto fromReference =
        sys_days{day} - referenceDay + hours{time.hour} + minutes{time.minute} + seconds{time.second};
    return Date{static_cast<double>(fromReference.count())};
}

} // namespace platform
