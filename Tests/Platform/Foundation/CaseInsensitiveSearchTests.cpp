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
        {"Projects", "projects!", false, false},
        {"abcabd", "ABD", true, true},
        {"@[`{", "`", true, true},
        {"@", "`", false, false},
        {"text", "", false, false},
        {"", "a", false, false},
        {"MÜNCHEN", "münchen", true, true},
        {"ПРОЕКТЫ", "проект", true, true},
        // Diacritics count.
        {"Cafe", "café", false, false},
        {"Café cafe", "cafe", true, true},
        // The same character, composed or not, and marks in any order.
        {"Café", std::string("CAFE") + acute, true, true},
        {std::string("CAFE") + acute, "café", true, true},
        {std::string("o") + acute + dotBelow, std::string("o") + dotBelow + acute, true, true},
        {"\xE2\x84\xAB", "å", true, true},
        // A mark belongs to the letter before it.
        {std::string("cafe") + acute, "cafe", false, false},
        {std::string("cafe") + acute, "caf", true, true},
        {std::string("e") + acute + "e", "e", true, true},
        {std::string("e") + acute + acute, std::string("e") + acute, false, false},
        {"\xE0\xA4\x95\xE0\xA4\xBE", "\xE0\xA4\x95", false, false},
        // Letters that fold to more than one.
        {"Straße", "STRASSE", true, true},
        {"STRASSE", "straße", true, true},
        {"oﬃce", "OFFICE", true, false},
        {"ΣΊΣΥΦΟΣ", "σίσυφος", true, true},
        // The four i of Turkish.
        {"ISTANBUL", "istanbul", true, false},
        {"ISTANBUL", "ıstanbul", false, true},
        {"İstanbul", "istanbul", false, true},
        {"istanbul", "İSTANBUL", false, true},
        {std::string("I") + dotAbove + "stanbul", "istanbul", false, true},
        {"kIz", "KIZ", true, true},
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
