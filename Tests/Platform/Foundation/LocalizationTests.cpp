#include "Platform/Foundation/Localization.h"

#include "Tests/Support/ChildProcess.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace platform {
namespace {

TEST(PreferredLanguages, FollowTheSettings) {
    const std::pair<LanguageSettings, std::vector<std::string>> rows[]{
        {{}, {}},
        {{.lang = "sr@latin"}, {"sr"}},
        {{.lcAll = "fr_FR", .lcMessages = "it_IT", .lang = "de_DE"}, {"fr-FR"}},
        {{.lcMessages = "it_IT", .lang = "de_DE"}, {"it-IT"}},
        {{.lang = "C.UTF-8", .language = "de"}, {}},
        {{.lcAll = "C", .lang = "de_DE.UTF-8", .language = "de"}, {}},
        {{.lang = "de_AT.UTF-8", .language = "de_AT:de:en_GB:en"}, {"de-AT", "de", "en-GB", "en"}},
        {{.lang = "de_AT.UTF-8", .language = "tr_TR.UTF-8:tr_TR@x"}, {"tr-TR", "de-AT"}},
        {{.lang = "de_DE", .language = ":fr::"}, {"fr", "de-DE"}},
        {{.lang = "de_DE", .language = "fr:C:it"}, {"fr"}},
    };
    for (const auto& [settings, languages] : rows) {
        EXPECT_EQ(preferredLanguages(settings), languages)
            << settings.lcAll << '|' << settings.lcMessages << '|' << settings.lang << '|' << settings.language;
    }
}

/// Runs `check` in a process with these languages, since a process takes its languages once.
void inLanguages(const std::string& locale, const std::string& languages, const std::function<void()>& check) {
    const pid_t child = startProcess([&] {
        clearenv();
        setenv("LANG", locale.c_str(), 1);
        setenv("LANGUAGE", languages.c_str(), 1);
        check();
        _exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
        return false;
    });
    EXPECT_EQ(statusOf(child), 0) << locale << ' ' << languages;
}

TEST(Localization, TakesTheFirstLanguageWithACatalog) {
    const std::tuple<const char*, const char*, const char*> rows[]{
        {"de_DE.ISO-8859-1@euro", "", "Favoriten"}, {"xx_YY.UTF-8", "xx:de_AT:en", "Favoriten"},
        {"en_US.UTF-8", "", "Favorites"},           {"xx_YY.UTF-8", "xx:en:de", "Favorites"},
        {"de_DE.UTF-8", "C:de", "Favorites"},       {"C", "de", "Favorites"},
    };
    for (const auto& [locale, languages, expected] : rows) {
        inLanguages(locale, languages, [expected = expected] {
            startLocalization("foliovault-widgets");
            EXPECT_EQ(localized("Favorites"), expected);
        });
    }
}

TEST(Localization, TextsAndCounts) {
    inLanguages("de_DE.UTF-8", "", [] {
        EXPECT_EQ(localizedCount("%lld items", 1), "1 items");
        startLocalization("foliovault-widgets");
        EXPECT_EQ(localized("Not in any catalog"), "Not in any catalog");
        EXPECT_EQ(localized(""), "");
        const std::tuple<const char*, std::int64_t, const char*> rows[]{
            {"%lld items", 0, "0 Objekte"},
            {"%lld items", 1, "1 Objekt"},
            {"%lld items", -1, "-1 Objekt"},
            {"%lld items", std::numeric_limits<std::int64_t>::min(), "-9223372036854775808 Objekte"},
            {"%lld of something else", 7, "7 of something else"},
            {"Untitled", 3, "Ohne Titel"},
        };
        for (const auto& [key, count, expected] : rows) {
            EXPECT_EQ(localizedCount(key, count), expected);
        }
    });
}

TEST(Localization, SearchesByTheRulesOfTheFirstLanguage) {
    const std::tuple<const char*, const char*, bool> rows[]{{"tr_TR.UTF-8", "", true},
                                                            {"az_AZ", "", true},
                                                            {"de_DE.UTF-8", "tr:de", true},
                                                            {"en_US.UTF-8", "", false},
                                                            {"tr_TR", "en:tr", false},
                                                            {"try", "", false},
                                                            {"C", "", false}};
    for (const auto& [locale, languages, isTurkic] : rows) {
        inLanguages(locale, languages, [isTurkic = isTurkic] {
            EXPECT_EQ(localizedCaseInsensitiveContains("KIZ", "kız"), isTurkic);
            EXPECT_EQ(localizedCaseInsensitiveContains("KIZ", "kiz"), !isTurkic);
        });
    }
}

} // namespace
} // namespace platform
