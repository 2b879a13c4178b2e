#include "Platform/Foundation/LocalizedDate.h"

#include "Platform/Foundation/Calendar.h"
#include "Platform/Foundation/Icu.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>

namespace platform {
namespace {

/// Returns the fields of `skeleton` in the order and wording of the user's locale; nothing without ICU.
std::optional<std::string> formattedByIcu(Date date, std::u16string_view skeleton) {
    const IcuDates* icu = IcuDates::shared();
    if (icu == nullptr) {
        return std::nullopt;
    }
    // Patterns and dates have some twenty characters.
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

/// Formats as strftime does.
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

std::string timeLocale(std::string_view name) {
    const std::size_t modifierBegin = std::min(name.find('@'), name.size());
    const std::string_view modifier = name.substr(modifierBegin);
    std::string locale(name.substr(0, std::min(name.find('.'), modifierBegin)));
    if (locale.empty() || locale == "C" || locale == "POSIX") {
        locale = "en_US";
    }
    std::replace(locale.begin(), locale.end(), '-', '_');
    if (modifier.starts_with("@calendar=")) {
        locale += modifier;
    } else if (modifier == "@latin" || modifier == "@cyrillic") {
        const std::size_t languageEnd = std::min(locale.find('_'), locale.size());
        locale.insert(languageEnd, modifier == "@latin" ? "_Latn" : "_Cyrl");
    }
    return locale;
}

std::string timeLocaleOfEnvironment() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
            return timeLocale(value);
        }
    }
    return timeLocale("");
}

} // namespace platform
