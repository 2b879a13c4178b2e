#include "Platform/Foundation/Localization.h"

#include "Platform/Foundation/SharedFolder.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <libintl.h>

namespace platform {

namespace {

/// The domain of the program's catalogs, or null while texts are the English wordings.
const char* catalogDomain = nullptr;

bool isUntranslatedLocale(std::string_view tag) {
    return tag == "C" || tag == "POSIX";
}

/// "de-AT" for "de_AT.UTF-8@euro".
std::string languageTag(std::string_view locale) {
    std::string tag(locale.substr(0, locale.find_first_of(".@")));
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

/// The languages that stand before English, whose wordings are the keys themselves, as gettext spells their list.
std::string languagesToLookUp() {
    std::string list;
    for (std::string language : preferredLanguages(languageSettingsOfEnvironment())) {
        if (language == "en" || language.starts_with("en-")) {
            break;
        }
        std::replace(language.begin(), language.end(), '-', '_');
        list += list.empty() ? "" : ":";
        list += language;
    }
    return list;
}

} // namespace

void startLocalization(const char* domain) {
    const std::string languages = languagesToLookUp();
    if (languages.empty()) {
        return;
    }
    // For any locale but "C", gettext looks catalogs up in the languages of LANGUAGE, and "C.UTF-8" is the one other
    // locale that every machine has.
    const std::string shared = sharedFolder();
    if (shared.empty() || setlocale(LC_MESSAGES, "C.UTF-8") == nullptr ||
        setenv("LANGUAGE", languages.c_str(), 1) != 0) {
        return;
    }
    bindtextdomain(domain, (shared + "/locale").c_str());
    bind_textdomain_codeset(domain, "UTF-8");
    catalogDomain = domain;
}

std::string localized(const char* key) {
    // gettext keeps a catalog's own header under the empty key.
    return catalogDomain != nullptr && *key != '\0' ? dgettext(catalogDomain, key) : key;
}

std::string localizedCount(const char* key, std::int64_t count) {
    constexpr std::string_view placeholder = "%lld";
    const auto bits = static_cast<unsigned long>(count);
    const unsigned long magnitude = count < 0 ? 0 - bits : bits;
    std::string text = catalogDomain != nullptr ? dngettext(catalogDomain, key, key, magnitude) : key;
    if (const std::size_t at = text.find(placeholder); at != std::string::npos) {
        text.replace(at, placeholder.size(), std::to_string(count));
    }
    return text;
}

LanguageSettings languageSettingsOfEnvironment() {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value != nullptr ? value : "");
    };
    return {.lcAll = variable("LC_ALL"),
            .lcMessages = variable("LC_MESSAGES"),
            .lang = variable("LANG"),
            .language = variable("LANGUAGE")};
}

std::vector<std::string> preferredLanguages(const LanguageSettings& settings) {
    const std::array<std::string_view, 3> locales = {settings.lcAll, settings.lcMessages, settings.lang};
    const auto* const messageLocale =
        std::find_if(locales.begin(), locales.end(), [](std::string_view locale) { return !locale.empty(); });
    std::vector<std::string> languages;
    if (messageLocale == locales.end() || isUntranslatedLocale(languageTag(*messageLocale))) {
        return languages;
    }
    std::string entries = settings.language;
    entries += ':';
    entries += *messageLocale;
    std::string_view rest = entries;
    while (!rest.empty()) {
        const std::string_view entry = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
        std::string language = languageTag(entry);
        if (isUntranslatedLocale(language)) {
            break;
        }
        if (!language.empty() && std::find(languages.begin(), languages.end(), language) == languages.end()) {
            languages.push_back(std::move(language));
        }
    }
    return languages;
}

} // namespace platform
