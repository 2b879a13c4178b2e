#include "Platform/Foundation/LocalizedDate.h"

#include "Platform/Foundation/TextFields.h"
#include "Platform/Foundation/TimeLocale.h"

#include <algorithm>

namespace platform {
namespace {

std::string_view nameOfMonth(std::string_view names, std::int64_t month) {
    std::string_view name;
    for (std::int64_t i = 0; i < month; ++i) {
        name = nextField(names, '|');
    }
    return name;
}

void appendNumber(std::string& out, std::int64_t number, std::size_t digits, std::string_view zero) {
    std::string plain = std::to_string(number);
    plain.insert(0, digits - std::min(digits, plain.size()), '0');
    if (zero == "0") {
        out += plain;
        return;
    }
    for (const char digit : plain) {
        // The ten digits of a script differ in the last byte alone.
        const bool isDigit = digit >= '0' && digit <= '9';
        out += isDigit ? zero.substr(0, zero.size() - 1) : std::string_view();
        out += isDigit ? static_cast<char>(zero.back() + (digit - '0')) : digit;
    }
}

} // namespace

std::string formatted(const CalendarDay& day, const DatePattern& pattern) {
    std::string out;
    std::string_view rest = pattern.text;
    while (!rest.empty()) {
        out += nextField(rest, '{');
        const std::string_view field = nextField(rest, '}');
        if (field == "name") {
            out += nameOfMonth(pattern.monthNames, day.month);
        } else if (field.starts_with('d')) {
            appendNumber(out, day.day, field.size(), pattern.zero);
        } else if (field.starts_with('M')) {
            appendNumber(out, day.month, field.size(), pattern.zero);
        } else if (field.starts_with('y')) {
            appendNumber(out, day.year, field.size(), pattern.zero);
        }
    }
    return out;
}

std::string localizedDate(Date date) {
    return formatted(UserCalendar::shared().dayOf(date), datePatternOf(timeLocaleOfEnvironment().name));
}

} // namespace platform
