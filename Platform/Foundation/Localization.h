// Texts in the user's language.
//
// Texts are looked up by their English wording in message catalogs, the files
// locale/LANGUAGE/LC_MESSAGES/DOMAIN.mo in `sharedFolder`. The languages are those of `preferredLanguages`; they need
// not be generated on the machine, only translated. A text without a translation, or a user without a translated
// language, gets the English wording.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Reads the catalogs of `domain` for the languages of this process's environment that stand before English: for
/// "de-AT" those of "de_AT" and of "de". Skips a broken catalog. Call at most once, at start, before other threads.
void startLocalization(const char* domain);

/// The text for `key`, an English wording.
std::string localized(const char* key);

/// The text for `key`, an English wording with one "%lld" in it, which `count` replaces. A language whose
/// wording changes with the number may say so in its catalog (plural forms of the same key).
std::string localizedCount(const char* key, std::int64_t count);

/// The variables that say which languages a user prefers, as the environment has them; empty where it has none.
struct LanguageSettings {
    std::string lcAll;
    std::string lcMessages;
    std::string lang;
    std::string language;
};
LanguageSettings languageSettingsOfEnvironment();

/// The user's languages, most preferred first, as tags like "de-AT": the entries of LANGUAGE, then the message locale
/// (the first that is set of LC_ALL, LC_MESSAGES, LANG); without codeset and modifier, each once. Empty when the
/// message locale is unset, "C" or "POSIX"; such an entry in LANGUAGE ends the list, as it does for gettext.
std::vector<std::string> preferredLanguages(const LanguageSettings& settings);

/// Whether `text` contains `needle` ignoring case, by the rules of the user's language (Turkish and Azeri fold I and İ
/// their own way). Diacritics count, canonically equivalent texts match, an empty needle matches nothing, and a match
/// never ends inside a character that combines with what follows.
bool localizedCaseInsensitiveContains(std::string_view text, std::string_view needle);

} // namespace platform
