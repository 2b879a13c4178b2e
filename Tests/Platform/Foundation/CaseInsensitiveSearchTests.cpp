#include "Platform/Foundation/CaseInsensitiveSearch.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace platform {
namespace {

constexpr const char* acute = "\xCC\x81";
constexpr const char* dotAbove = "\xCC\x87";
constexpr const char* dotBelow = "\xCC\xA3";

TEST(CaseInsensitiveSearch, FindsByTheRulesOfTheLanguage) {
    const std::tuple<std::string, std::string, bool, bool> searches[]{
        {"Projects", "PROJ", true, true},
        {"abcabd", "ABD", true, true},
        {"@[`{", "`", true, true},
        {"@", "`", false, false},
        {"text", "", false, false},
        {"MÜNCHEN", "münchen", true, true},
        // Diacritics count.
        {"Café cafe", "cafe", true, true},
        // The same character, composed or not, and marks in any order.
        {"Café", std::string("CAFE") + acute, true, true},
        {std::string("o") + acute + dotBelow, std::string("o") + dotBelow + acute, true, true},
        // A mark belongs to the letter before it.
        {std::string("cafe") + acute, "cafe", false, false},
        {std::string("cafe") + acute, "caf", true, true},
        {std::string("e") + acute + acute, std::string("e") + acute, false, false},
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
        {std::string("I") + dotAbove + "stanbul", "istanbul", false, true},
        // Damaged text is no reason to fail.
        {"\xFFÄ", "ä", true, true},
    };
    for (const auto& [text, needle, isInStandard, isInTurkic] : searches) {
        EXPECT_EQ(caseInsensitiveContains(text, needle, CaseFolding::standard), isInStandard) << needle << text;
        EXPECT_EQ(caseInsensitiveContains(text, needle, CaseFolding::turkic), isInTurkic) << needle << text;
    }
}

} // namespace
} // namespace platform
