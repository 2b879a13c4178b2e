#include "Platform/Foundation/LocalizedDate.h"

#include "Platform/Foundation/Calendar.h"
#include "Platform/Foundation/Icu.h"
#include "Platform/Foundation/TimeLocale.h"

#include <array>
#include <ctime>
#include <memory>
#include <optional>
#include <string_view>

namespace platform {
namespace {

/// The fields of `skeleton` as the user's locale orders and words them; nothing without ICU.
std::optional<std::string> formattedByIcu(Date date, std::u16string_view skeleton) {
    const IcuDates* icu = IcuDates::shared();
    if (icu == nullptr) {
        return std::nullopt;
    }
    // The longest are some twenty characters.
    std::array<UChar, 200> pattern{};
    std::array<UChar, 200> text{};
    std::array<char, 3 * text.size()> utf8{};
    constexpr double millisecondsPerSecond = 1000;
    const auto room = [](const auto& array) { return static_cast<std::int32_t>(array.size()); };
    const std::string locale = timeLocaleOfEnvironment();
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UDateTimePatternGenerator, decltype(icu->closePatterns)> patterns(
        icu->openPatterns(locale.c_str(), &error), icu->closePatterns);
    const std::int32_t patternLength =
        icu->getBestPattern(patterns.get(), skeleton.data(), room(skeleton), pattern.data(), room(pattern), &error);
    const std::unique_ptr<UDateFormat, decltype(icu->closeFormat)> format(
        icu->openFormat(UDAT_PATTERN, UDAT_PATTERN, locale.c_str(), u"Etc/UTC", -1, pattern.data(), patternLength,
                        &error),
        icu->closeFormat);
    const std::int32_t length = icu->format(format.get(), localTime(date).unixTime() * millisecondsPerSecond,
                                            text.data(), room(text), nullptr, &error);
    std::int32_t utf8Length = 0;
    icu->strToUtf8(utf8.data(), room(utf8), &utf8Length, text.data(), length, &error);
    return U_SUCCESS(error) ? std::optional(std::string(utf8.data(), static_cast<std::size_t>(utf8Length)))
                            : std::nullopt;
}

/// As strftime has it.
std::string formattedPlainly(Date date, const char* format) {
    const auto time = static_cast<std::time_t>(localTime(date).unixTime());
    std::tm parts{};
    std::array<char, 64> text{};
    return gmtime_r(&time, &parts) != nullptr
               ? std::string(text.data(), std::strftime(text.data(), text.size(), format, &parts))
               : "";
}

} // namespace

std::string localizedDate(Date date) {
    const auto text = formattedByIcu(date, u"yMMMd");
    return text ? *text : formattedPlainly(date, "%Y-%m-%d");
}

std::string localizedTime(Date date) {
    const auto text = formattedByIcu(date, u"jm");
    return text ? *text : formattedPlainly(date, "%H:%M");
}

} // namespace platform
