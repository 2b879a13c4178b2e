#include "Platform/Foundation/TimeLocale.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

TimeLocale parseTimeLocale(std::string_view locale) {
    constexpr std::string_view calendarKey = "calendar=";
    const std::size_t modifierBegin = std::min(locale.find('@'), locale.size());
    const std::string_view modifier = locale.substr(std::min(modifierBegin + 1, locale.size()));

    TimeLocale parsed;
    parsed.name = locale.substr(0, std::min(locale.find('.'), modifierBegin));
    if (parsed.name == "C" || parsed.name == "POSIX") {
        parsed.name.clear();
    }
    std::replace(parsed.name.begin(), parsed.name.end(), '-', '_');
    if (modifier.starts_with(calendarKey)) {
        parsed.calendar = modifier.substr(calendarKey.size());
    } else if (modifier == "latin" || modifier == "cyrillic") {
        const std::size_t languageEnd = std::min(parsed.name.find('_'), parsed.name.size());
        parsed.name.insert(languageEnd, modifier == "latin" ? "_Latn" : "_Cyrl");
    }
    return parsed;
}

TimeLocale timeLocaleOfEnvironment() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
            return parseTimeLocale(value);
        }
    }
    return {};
}

} // namespace platform
