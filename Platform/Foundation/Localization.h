// Texts in the user's language.
//
// Texts are looked up by their English wording in message catalogs, the files locale/LANGUAGE/LC_MESSAGES/DOMAIN.mo in
// `sharedFolder`. The languages are those of `preferredLanguages`; their locales need not be generated on the machine.
// A text without a translation stays in English.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Reads the catalogs of `domain` for the languages of the environment that come before English: for "de-AT" those of
/// "de_AT" and of "de". Skips a broken catalog. Call at most once, at start, before other threads.
void startLocalization(const char* domain);

/// Returns the text for `key`, an English wording.
std::string localized(const char* key);

/// Returns the text for `key`, an English wording with one "%lld", which `count` replaces. A catalog may have plural
/// forms for the key.
std::string localizedCount(const char* key, std::int64_t count);

/// The environment variables that name the preferred languages; empty if not set.
struct LanguageSettings {
    std::string lcAll;
    std::string lcMessages;
    std::string lang;
    std::string language;
};
LanguageSettings languageSettingsOfEnvironment();

/// Returns the user's languages as tags like "de-AT", the most preferred first: the entries of LANGUAGE, then the
/// message locale (the first that is set of LC_ALL, LC_MESSAGES, LANG); without codeset and modifier, each once.
/// Returns none if the message locale is unset, "C" or "POSIX". Such an entry in LANGUAGE ends the list, as it does for
/// gettext.
std::vector<std::string> preferredLanguages(const LanguageSettings& settings);

/// Calls `caseInsensitiveContains` with the rules of the user's language: Turkish and Azeri are Turkic.
bool localizedCaseInsensitiveContains(std::string_view text, std::string_view needle);

} // namespace platform
