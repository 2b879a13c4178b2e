#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/PluralRule.h"
#include "Platform/Foundation/TranslationCatalog.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

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
    EXPECT_EQ(evaluatePluralRule("n/0 + n%0", 5), 0UL);
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
    // The magic number, the major revision, the number of texts, offsets of tables and of a text, a text that is not UTF-8,
    // and a key out of order.
    constexpr std::size_t key = 40;
    for (const std::size_t offset : {0UL, 6UL, 8UL, 11UL, 15UL, 19UL, 35UL, 39UL, whole.find("Wszystkie"), key}) {
        std::string changed = whole;
        changed.at(offset) = offset == key ? '\0' : '\xFF';
        EXPECT_FALSE(TranslationCatalog::parse(Data::owning(changed))) << offset;
    }
}

} // namespace
} // namespace platform
