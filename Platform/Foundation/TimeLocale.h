// The locale in which the user wants dates.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The name that ICU has for a locale whose name the environment has: "de_AT" for "de_AT.UTF-8", "sr_Latn_RS" for
/// "sr_RS@latin", "en_US@calendar=buddhist" for itself; "en_US" for "C", "POSIX" and nothing.
std::string timeLocale(std::string_view name);

/// That of the first that is set of LC_ALL, LC_TIME and LANG.
std::string timeLocaleOfEnvironment();

} // namespace platform
