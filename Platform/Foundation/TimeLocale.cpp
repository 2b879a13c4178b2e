#include "Platform/Foundation/TimeLocale.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

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
