#include "Platform/Foundation/Localization.h"

#include "Platform/Foundation/CaseInsensitiveSearch.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/ProgramFolder.h"
#include "Platform/Foundation/TranslationCatalog.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace platform {

namespace {

/// The program's catalogs, the most preferred language first.
std::vector<TranslationCatalog>& catalogs() {
    static std::vector<TranslationCatalog> catalogs;
    return catalogs;
}

/// Returns the text of the first catalog that has one for these arguments of `TranslationCatalog::find`, else the key.
template <typename... Count>
std::string translated(const char* key, Count... count) {
    for (const TranslationCatalog& catalog : catalogs()) {
        if (const auto text = catalog.find(key, count...)) {
            return std::string(*text);
        }
    }
    return key;
}

bool isUntranslatedLocale(std::string_view tag) {
    return tag == "C" || tag == "POSIX";
}

/// Returns "de-AT" for "de_AT.UTF-8@euro".
std::string languageTag(std::string_view locale) {
    std::string tag(locale.substr(0, locale.find_first_of(".@")));
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

/// Returns the folders of the languages before English, whose wordings are the keys: "de_AT", "de".
std::vector<std::string> catalogFolders() {
    std::vector<std::string> folders;
    for (std::string language : preferredLanguages(languageSettingsOfEnvironment())) {
        if (language == "en" || language.starts_with("en-")) {
            break;
        }
        std::replace(language.begin(), language.end(), '-', '_');
        while (!language.empty()) {
            if (std::find(folders.begin(), folders.end(), language) == folders.end()) {
                folders.push_back(language);
            }
            language.resize(language.find('_') == std::string::npos ? 0 : language.rfind('_'));
        }
    }
    return folders;
}

} // namespace

void startLocalization(const char* domain) {
    const std::vector<std::string> folders = catalogFolders();
    const std::string shared = folders.empty() ? "" : sharedFolder();
    if (shared.empty()) {
        return;
    }
    for (const std::string& folder : folders) {
        std::string path = shared;
        path.append("/locale/").append(folder).append("/LC_MESSAGES/").append(domain).append(".mo");
        auto file = DiskFileSystem::shared().read(path);
        if (auto catalog = file ? TranslationCatalog::parse(*std::move(file)) : std::nullopt) {
            catalogs().push_back(*std::move(catalog));
        }
    }
}

std::string localized(const char* key) {
    // The empty key has the catalog's own header.
    return *key != '\0' ? translated(key) : key;
}

std::string localizedCount(const char* key, std::int64_t count) {
    constexpr std::string_view placeholder = "%lld";
    const auto bits = static_cast<unsigned long>(count);
    const unsigned long magnitude = count < 0 ? 0 - bits : bits;
    std::string text = translated(key, magnitude);
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
