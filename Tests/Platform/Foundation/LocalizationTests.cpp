#include "Tests/Support/ChildProcess.h"

#include "Platform/Foundation/CaseInsensitiveSearch.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/PluralRule.h"
#include "Platform/Foundation/TranslationCatalog.h"

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

TEST(Localization, TextsAreOfTheFirstLanguageWithACatalogAndSearchesOfTheFirst) {
    struct Row {
        const char* locale;
        const char* languages;
        const char* favorites = "Favorites";
        bool isTurkic = false;
    };
    for (const Row& row : {Row{"de_AT.UTF-8@euro", "", "Favoriten"},
                           {"fr_FR.UTF-8", "fr:de_CH:en", "Favoriten"},
                           {"de_DE.UTF-8", "tr:de", "Favoriten", true},
                           {"tr_TR.UTF-8", "", "Favorites", true},
                           {"az_AZ", "", "Favorites", true},
                           {"en_US.UTF-8", "en:de"},
                           {"tr_TR", "en:tr"},
                           {"try", ""},
                           {"C", "de"}}) {
        inLanguages(row.locale, row.languages, [&row] {
            startLocalization("foliovault-widgets");
            EXPECT_EQ(localized("Favorites"), row.favorites);
            EXPECT_EQ(localizedCaseInsensitiveContains("KIZ", "kız"), row.isTurkic);
            EXPECT_EQ(localizedCaseInsensitiveContains("KIZ", "kiz"), !row.isTurkic);
        });
    }
}

TEST(CaseInsensitiveSearch, FindsByTheRulesOfTheLanguage) {
    const std::tuple<std::string, std::string, bool, bool> searches[]{
        {"Projects", "PROJ", true, true},
        {"@", "`", false, false},
        {"text", "", false, false},
        {"MÜNCHEN", "münchen", true, true},
        // Diacritics count.
        {"Café cafe", "cafe", true, true},
        // The same character, composed or not, and marks in any order.
        {"Café", "CAFE\u0301", true, true},
        {"o\u0301\u0323", "o\u0323\u0301", true, true},
        // A mark belongs to the letter before it.
        {"cafe\u0301", "cafe", false, false},
        {"cafe\u0301", "caf", true, true},
        {"e\u0301\u0301", "e\u0301", false, false},
        {"\xE0\xA4\x95\xE0\xA4\xBE", "\xE0\xA4\x95", false, false},
        // Letters that fold to more than one.
        {"Straße", "STRASSE", true, true},
        {"oﬃce", "OFFICE", true, false},
        {"ΣΊΣΥΦΟΣ", "σίσυφος", true, true},
        // The four i of Turkish.
        {"ISTANBUL", "istanbul", true, false},
        {"ISTANBUL", "ıstanbul", false, true},
        {"İstanbul", "istanbul", false, true},
        {"istanbul", "İSTANBUL", false, true},
        {"I\u0307stanbul", "istanbul", false, true},
        // Invalid text.
        {"\xFFÄ", "ä", true, true},
    };
    for (const auto& [text, needle, isInStandard, isInTurkic] : searches) {
        EXPECT_EQ(caseInsensitiveContains(text, needle, CaseFolding::standard), isInStandard) << needle << text;
        EXPECT_EQ(caseInsensitiveContains(text, needle, CaseFolding::turkic), isInTurkic) << needle << text;
    }
}

// clang-format off
/// A rule as catalogs write it, and as the compiler reads it.
#define RULE(expression) {#expression, [](unsigned long n) -> unsigned long { return expression; }}

TEST(PluralRule, IsWhatTheCompilerMakesOfIt) {
    const std::pair<const char*, unsigned long (*)(unsigned long n)> rules[]{
        RULE((n > 1)),
        RULE(n % 10 == 1 && n % 100 != 11 ? 0 : n != 0 ? 1 : 2),
        RULE(n == 1 ? 0 : n % 10 >= 2 && n % 10 <= 4 && (n % 100 < 10 || n % 100 >= 20) ? 1 : 2),
        RULE((n % 100 == 1 ? 1 : n % 100 == 2 ? 2 : n % 100 == 3 || n % 100 == 4 ? 3 : 0)),
        RULE(!n + 2 * (n - 1) * !!n / 3 - 1 <= (n == 2)),
    };
    // clang-format on
    for (const auto& [rule, expected] : rules) {
        for (const unsigned long n :
             {0UL, 1UL, 2UL, 3UL, 4UL, 5UL, 11UL, 12UL, 20UL, 21UL, 22UL, 100UL, 101UL, 111UL, ~0UL}) {
            EXPECT_EQ(evaluatePluralRule(rule, n), expected(n)) << rule << ' ' << n;
        }
    }
    EXPECT_EQ(evaluatePluralRule(" n/0 + n%0 ", 5), 0UL);
    for (const std::string& invalid :
         {std::string(), std::string("n n"), std::string("n ? 1"), std::string("(n"), std::string("n = 1"),
          std::string("n !"), std::string("m"), std::string("99999999999999999999"), std::string(100'000, '('),
          std::string(100'000, '!'), "n" + std::string(100'000, '?')}) {
        EXPECT_EQ(evaluatePluralRule(invalid, 1), std::nullopt) << invalid.substr(0, 20);
    }
}

std::string polish() {
    const auto file = DiskFileSystem::shared().read(PROJECT_FOLDER "/Fuzz/Corpus/TranslationCatalogFuzzer/polish");
    return std::string(file.value_or(Data()).bytes());
}

TEST(TranslationCatalog, HasFormsForItsLanguagesNumbers) {
    const auto catalog = TranslationCatalog::parse(Data::owning(polish()));
    ASSERT_TRUE(catalog);
    EXPECT_EQ(catalog->find("All"), "Wszystkie");
    for (const char* absent : {"Al", "All!", "zzz"}) {
        EXPECT_EQ(catalog->find(absent), std::nullopt) << absent;
    }
    const std::pair<unsigned long, const char*> forms[]{
        {0, "%lld elementów"}, {1, "%lld element"}, {22, "%lld elementy"}, {12, "%lld elementów"}};
    for (const auto& [count, form] : forms) {
        EXPECT_EQ(catalog->find("%lld items", count), form) << count;
        EXPECT_EQ(catalog->find("All", count), "Wszystkie") << count;
    }
}

TEST(TranslationCatalog, RefusesBrokenFiles) {
    const std::string whole = polish();
    for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
        EXPECT_FALSE(TranslationCatalog::parse(Data::owning(whole.substr(0, length)))) << length;
    }
    // The magic number, the major revision, the number of texts, offsets of tables and of a text, a text that is not
    // UTF-8, and a key out of order.
    constexpr std::size_t key = 40;
    for (const std::size_t offset : {0UL, 6UL, 8UL, 11UL, 15UL, 19UL, 35UL, 39UL, whole.find("Wszystkie"), key}) {
        std::string changed = whole;
        changed.at(offset) = offset == key ? '\0' : '\xFF';
        EXPECT_FALSE(TranslationCatalog::parse(Data::owning(changed))) << offset;
    }
}

} // namespace
} // namespace platform
