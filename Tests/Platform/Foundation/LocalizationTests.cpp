#include "Platform/Foundation/Localization.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>

namespace platform {
namespace {

using Languages = std::vector<std::string>;

TEST(PreferredLanguages, FollowTheSettings) {
    const std::vector<std::pair<LanguageSettings, Languages>> cases = {
        {{}, {}},
        {{.lang = "de_DE.UTF-8@euro"}, {"de-DE"}},
        {{.lang = "sr@latin"}, {"sr"}},
        // The first that is set is the message locale.
        {{.lcAll = "fr_FR", .lcMessages = "it_IT", .lang = "de_DE"}, {"fr-FR"}},
        {{.lcMessages = "it_IT", .lang = "de_DE"}, {"it-IT"}},
        // No language of its own.
        {{.lang = "C", .language = "de"}, {}},
        {{.lang = "C.UTF-8", .language = "de"}, {}},
        {{.lcAll = "C", .lang = "de_DE.UTF-8", .language = "de"}, {}},
        // LANGUAGE comes first, each language once.
        {{.lang = "de_AT.UTF-8", .language = "de_AT:de:en_GB:en"}, {"de-AT", "de", "en-GB", "en"}},
        {{.lang = "de_AT.UTF-8", .language = "tr_TR.UTF-8:tr_TR@x"}, {"tr-TR", "de-AT"}},
        {{.lang = "de_DE", .language = ":fr::"}, {"fr", "de-DE"}},
        {{.lang = "de_DE", .language = "fr:C:it"}, {"fr"}},
    };
    for (const auto& [settings, languages] : cases) {
        EXPECT_EQ(preferredLanguages(settings), languages)
            << settings.lcAll << '|' << settings.lcMessages << '|' << settings.lang << '|' << settings.language;
    }
}

/// The lines that the probe prints for `arguments` where the environment holds `variables` alone.
Languages probe(const std::string& variables, const std::string& arguments) {
    const std::string command = "env -i " + variables + " " LOCALIZATION_PROBE " foliovault-widgets " + arguments;
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output(4096, '\0');
    output.resize(std::fread(output.data(), 1, output.size(), pipe.get()));
    Languages lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(Localization, SpeaksTheFirstLanguageThatItKnows) {
    // "X-LANGUAGE" stands for a language without a catalog.
    const std::vector<std::pair<std::string, std::string>> environments = {
        {"LANG=de_AT.UTF-8", "Favoriten"},
        {"LANG=de_DE.ISO-8859-1@euro", "Favoriten"},
        {"LC_MESSAGES=de_CH LANG=en_US.UTF-8", "Favoriten"},
        {"LANG=en_US.UTF-8 LANGUAGE=de", "Favoriten"},
        {"LANG=xx_YY.UTF-8 LANGUAGE=xx:de_AT:en", "Favoriten"},
        {"LANG=de_DE.UTF-8 LANGUAGE=xx", "Favoriten"},
        // English is the wording of the keys, and what comes after it is not wanted.
        {"LANG=en_US.UTF-8", "Favorites"},
        {"LANG=xx_YY.UTF-8 LANGUAGE=xx:en:de", "Favorites"},
        {"LANG=de_DE.UTF-8 LANGUAGE=C:de", "Favorites"},
        // Nothing is translated.
        {"LC_ALL=C LANG=de_DE.UTF-8 LANGUAGE=de", "Favorites"},
        {"", "Favorites"},
    };
    for (const auto& [environment, favorites] : environments) {
        EXPECT_THAT(probe(environment, "Favorites"), testing::ElementsAre(favorites)) << environment;
    }
}

TEST(Localization, TextsAndCounts) {
    const std::string arguments =
        "'No Favorites' 'Not in any catalog' '' '0 %lld items' '1 %lld items' '-1 %lld items' "
        "'-9223372036854775808 %lld items' '2 +%lld more' '7 %lld of something else' '3 Untitled' "
        "'Add favorites in FOLIOvault to see them here.'";
    EXPECT_THAT(probe("LANG=de_DE.UTF-8", arguments),
                testing::ElementsAre("Keine Favoriten", "Not in any catalog", "", "0 Objekte", "1 Objekt", "-1 Objekt",
                                     "-9223372036854775808 Objekte", "+2 weitere", "7 of something else", "Ohne Titel",
                                     "In FOLIOvault hinzugefügte Favoriten erscheinen hier."));
    EXPECT_THAT(probe("LANG=en_US.UTF-8", arguments),
                testing::ElementsAre("No Favorites", "Not in any catalog", "", "0 items", "1 items", "-1 items",
                                     "-9223372036854775808 items", "+2 more", "7 of something else", "Untitled",
                                     "Add favorites in FOLIOvault to see them here."));
}

TEST(Localization, SearchesByTheRulesOfTheFirstLanguage) {
    const std::string arguments = "search KIZ kiz search KIZ kız";
    for (const char* environment : {"LANG=tr_TR.UTF-8", "LANG=az_AZ", "LANG=de_DE.UTF-8 LANGUAGE=tr:de"}) {
        EXPECT_THAT(probe(environment, arguments), testing::ElementsAre("not found", "found")) << environment;
    }
    for (const char* environment : {"LANG=en_US.UTF-8", "LANG=tr_TR.UTF-8 LANGUAGE=en:tr", "LANG=try", "LC_ALL=C"}) {
        EXPECT_THAT(probe(environment, arguments), testing::ElementsAre("found", "not found")) << environment;
    }
}

} // namespace
} // namespace platform
