#include "Platform/Foundation/Localization.h"

#include "Platform/Foundation/CaseInsensitiveSearch.h"
#include "Platform/Foundation/SharedFolder.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <libintl.h>

namespace platform {

namespace {

struct Translations {
    const char* domain = nullptr;
    /// Null where nothing is translated.
    locale_t locale = nullptr;
};

Translations& translations() {
    static Translations translations;
    return translations;
}

/// What `lookUp(domain)`, a call of gettext, returns in the locale of the translations; `key` without a translation.
template <typename LookUp>
std::string translated(const char* key, LookUp lookUp) {
    const auto [domain, locale] = translations();
    if (locale == nullptr) {
        return key;
    }
    const locale_t before = uselocale(locale);
    std::string text = lookUp(domain);
    uselocale(before);
    return text;
}

bool isUntranslatedLocale(std::string_view tag) {
    return tag == "C" || tag == "POSIX";
}

/// "de-AT" for "de_AT.UTF-8@euro".
std::string languageTag(std::string_view locale) {
    std::string tag(locale.substr(0, locale.find_first_of(".@")));
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

/// The languages that stand before English, whose wordings are the keys themselves, as LANGUAGE has them: "de_AT:fr".
std::string languagesBeforeEnglish() {
    std::string list;
    for (const std::string& language : preferredLanguages(languageSettingsOfEnvironment())) {
        if (language == "en" || language.starts_with("en-")) {
            break;
        }
        list.append(list.empty() ? "" : ":").append(language);
    }
    std::replace(list.begin(), list.end(), '-', '_');
    return list;
}

} // namespace

void startLocalization(const char* domain) {
    const std::string languages = languagesBeforeEnglish();
    const std::string shared = languages.empty() ? "" : sharedFolder();
    // gettext heeds LANGUAGE in every locale but "C". This one exists on every machine, and
    // it is used for the lookups alone, so that messages of the C library stay English.
    const locale_t locale = shared.empty() ? nullptr : newlocale(LC_MESSAGES_MASK, "C.UTF-8", nullptr);
    if (locale == nullptr || setenv("LANGUAGE", languages.c_str(), 1) != 0) {
        return;
    }
    bindtextdomain(domain, (shared + "/locale").c_str());
    bind_textdomain_codeset(domain, "UTF-8");
    translations() = {.domain = domain, .locale = locale};
}

std::string localized(const char* key) {
    // A catalog keeps what is said of itself under the empty key.
    return *key != '\0' ? translated(key, [key](const char* domain) { return dcgettext(domain, key, LC_MESSAGES); })
                        : key;
}

std::string localizedCount(const char* key, std::int64_t count) {
    constexpr std::string_view placeholder = "%lld";
    const auto bits = static_cast<unsigned long>(count);
    const unsigned long magnitude = count < 0 ? 0 - bits : bits;
    std::string text = translated(
        key, [key, magnitude](const char* domain) { return dcngettext(domain, key, key, magnitude, LC_MESSAGES); });
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

bool localizedCaseInsensitiveContains(std::string_view text, std::string_view needle) {
    static const CaseFolding folding = [] {
        const std::vector<std::string> languages = preferredLanguages(languageSettingsOfEnvironment());
        const std::string language = languages.empty() ? "" : languages.front().substr(0, languages.front().find('-'));
        return language == "tr" || language == "az" ? CaseFolding::turkic : CaseFolding::standard;
    }();
    return caseInsensitiveContains(text, needle, folding);
}

} // namespace platform
