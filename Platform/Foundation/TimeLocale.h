// The locale in which the user wants dates.
#pragma once

#include <string>
#include <string_view>

namespace platform {

struct TimeLocale {
    /// Language, script and territory as far as they are given, joined by "_": "de_AT", "sr_Latn_RS". Empty where the
    /// user has no locale.
    std::string name;
    /// The calendar that is asked for by "@calendar=…", by its name in ICU; empty where that is left to the locale.
    std::string calendar;
};

/// From a locale's name as the environment has it: "de_AT.UTF-8", "sr_RS@latin", "en_US@calendar=buddhist".
TimeLocale parseTimeLocale(std::string_view locale);

/// That of the first that is set of LC_ALL, LC_TIME and LANG.
TimeLocale timeLocaleOfEnvironment();

} // namespace platform
