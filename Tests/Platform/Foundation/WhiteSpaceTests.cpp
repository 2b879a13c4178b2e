#include "Platform/Foundation/WhiteSpace.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <random>

namespace platform {
namespace {

TEST(WhiteSpace, IsWhatUnicodeSaysItIs) {
    for (UChar32 character = 0; character <= 0x10FFFF; ++character) {
        if (U_IS_SURROGATE(character)) {
            continue;
        }
        std::string text;
        icu::UnicodeString(character).toUTF8String(text);
        const bool isWhite = u_isUWhiteSpace(character) != 0;
        ASSERT_EQ(leadingWhiteSpace(text + "x"), isWhite ? text.size() : 0) << character;
        ASSERT_EQ(trimmed(text + "x" + text), isWhite ? "x" : text + "x" + text) << character;
        ASSERT_TRUE(!isWhite || mayBeginWhiteSpace(text.front())) << character;
    }
    EXPECT_EQ(trimmed(" \n\u3000\u00A0"), "");
    // Cut characters are none.
    EXPECT_EQ(trimmed("\xE2\x80"), "\xE2\x80");
    EXPECT_EQ(trimmed("\xA0"), "\xA0");
}

/// The same, character by character.
std::string collapsedPlainly(std::string_view text) {
    std::string result;
    bool isSpaceDue = false;
    while (!text.empty()) {
        const std::size_t white = leadingWhiteSpace(text);
        if (white == 0) {
            result += isSpaceDue && !result.empty() ? " " : "";
            result += text.front();
        }
        isSpaceDue = white != 0;
        text.remove_prefix(std::max<std::size_t>(white, 1));
    }
    return result;
}

TEST(WhiteSpace, CollapsesWhereverItStands) {
    const char* const pieces[]{" ",
                               "  ",
                               "\n",
                               "\t",
                               "\u00A0",
                               "\u2003",
                               "\u3000",
                               "\u200B",
                               "ä",
                               "é",
                               "\xC2",
                               "\xE2\x80",
                               "a",
                               "word",
                               "a longer text with blanks",
                               "somewhat-longer-without-any"};
    std::mt19937 source(7);
    for (int count = 0; count < 20'000; ++count) {
        std::string text;
        for (auto length = source() % 12; length > 0; --length) {
            text += pieces[source() % std::size(pieces)];
        }
        std::string collapsed = text;
        collapseWhiteSpace(collapsed);
        ASSERT_EQ(collapsed, collapsedPlainly(text)) << '"' << text << '"';
    }
}

} // namespace
} // namespace platform
