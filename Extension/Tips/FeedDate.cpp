#include "Extension/Tips/FeedDate.h"

#include "Platform/Foundation/AsciiSet.h"
#include "Platform/Foundation/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <tuple>

namespace foliovault {

using namespace platform;

namespace {

constexpr std::array<std::string_view, 7> weekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                   "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> months{"January",   "February", "March",    "April",
                                                  "May",       "June",     "July",     "August",
                                                  "September", "October",  "November", "December"};

constexpr bool isLetter(char character) {
    return asciiLowerCased(character) >= 'a' && asciiLowerCased(character) <= 'z';
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return asciiLowerCased(x) == asciiLowerCased(y); });
}

/// Reads a date from its beginning. After a failed step, `isGood()` stays false.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool isGood() const { return isGood_; }
    bool isAtEnd() const { return rest_.empty(); }

    void skipBlanks() {
        while (const std::size_t size = leadingWhiteSpace(rest_)) {
            rest_.remove_prefix(size);
        }
    }

    void expectBlanks() {
        expect(leadingWhiteSpace(rest_) != 0);
        skipBlanks();
    }

    bool skip(char character) {
        const bool isThere = rest_.starts_with(character);
        rest_.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }

    void expect(char character) { expect(skip(character)); }

    /// Reads letters.
    std::string_view word() {
        return take(static_cast<std::size_t>(std::find_if_not(rest_.begin(), rest_.end(), isLetter) - rest_.begin()));
    }

    /// Reads `minDigits` to `maxDigits` digits.
    std::string_view digits(std::size_t minDigits = 1, std::size_t maxDigits = std::string_view::npos) {
        const auto size =
            static_cast<std::size_t>(std::find_if_not(rest_.begin(), rest_.end(), isDigit) - rest_.begin());
        expect(size >= minDigits && size <= maxDigits);
        return take(size);
    }

    int number() { return valueOf(digits()); }

    /// Reads one of `names`, in full or by its first three letters. Returns its index.
    int name(std::span<const std::string_view> names) {
        const std::string_view read = word();
        const auto found = std::find_if(names.begin(), names.end(), [read](std::string_view name) {
            return equalsIgnoringCase(read, name) || equalsIgnoringCase(read, name.substr(0, 3));
        });
        expect(found != names.end());
        return static_cast<int>(found - names.begin());
    }

    void expect(bool condition) { isGood_ = isGood_ && condition; }

    /// Returns the value of `digits`, up to a million.
    static int valueOf(std::string_view digits) {
        constexpr int max = 1'000'000;
        int value = 0;
        for (const char digit : digits) {
            value = std::min(value * 10 + (digit - '0'), max);
        }
        return value;
    }

  private:
    std::string_view take(std::size_t size) {
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }

    std::string_view rest_;
    bool isGood_ = true;
};

/// Reads a zone. Returns its seconds east of Greenwich.
int zone(Scanner& scanner) {
    const std::string_view name = scanner.word();
    const auto isNamed = [name](std::string_view zone) { return equalsIgnoringCase(name, zone); };
    const int sign = isNamed("Z") ? 0 : scanner.skip('+') ? 1 : scanner.skip('-') ? -1 : 0;
    scanner.expect(name.empty() ? sign != 0 : isNamed("Z") || isNamed("GMT") || isNamed("UTC") || isNamed("UT"));
    if (sign == 0) {
        return 0;
    }
    const std::string_view digits = scanner.digits(1, isNamed("GMT") ? 2 : 4);
    scanner.expect(digits.size() != 3);
    const int hours = Scanner::valueOf(digits.substr(0, 2));
    const bool hasColon = digits.size() <= 2 && (digits.size() == 2 || !name.empty()) && scanner.skip(':');
    const int minutes =
        Scanner::valueOf(hasColon ? scanner.digits(2, 2) : digits.substr(std::min<std::size_t>(2, digits.size())));
    scanner.expect(hours < 24 && minutes < 60);
    return sign * (hours * 60 + minutes) * 60;
}

std::optional<Date> dateFromHistoricalTime(CivilTime time) {
    if (time.year < 1 || std::tuple(time.year, time.month, time.day) >= std::tuple(1582, 10, 15)) {
        return time.year < 1 ? std::nullopt : dateFromCivilTime(time);
    }
    // Computed in the years 2000 to 2003, a multiple of four years later, where a Julian day is thirteen days after the
    // Gregorian day of the same name.
    constexpr int daysOfFourYears = 1461;
    constexpr double secondsOfDay = 86400;
    const int years = 2000 - time.year / 4 * 4;
    time.year += years;
    const int days = 13 - years / 4 * daysOfFourYears;
    const std::optional<Date> date = dateFromCivilTime(time);
    return date ? std::optional(date->addingSeconds(days * secondsOfDay)) : std::nullopt;
}

} // namespace

std::optional<Date> parseFeedDate(std::string_view text) {
    Scanner scanner(text);
    CivilTime time;
    scanner.skipBlanks();
    scanner.name(weekdays);
    scanner.expect(',');
    scanner.expectBlanks();
    time.day = scanner.number();
    scanner.expectBlanks();
    time.month = scanner.name(months) + 1;
    scanner.expectBlanks();
    time.year = scanner.number();
    scanner.expectBlanks();
    time.hour = scanner.number();
    scanner.expect(':');
    scanner.skipBlanks();
    time.minute = scanner.number();
    scanner.expect(':');
    scanner.skipBlanks();
    time.second = scanner.number();
    scanner.expectBlanks();
    const int secondsEast = zone(scanner);
    scanner.skipBlanks();
    const std::optional<Date> local = dateFromHistoricalTime(time);
    if (!scanner.isGood() || !scanner.isAtEnd() || !local) {
        return std::nullopt;
    }
    return local->addingSeconds(-secondsEast);
}

} // namespace foliovault
