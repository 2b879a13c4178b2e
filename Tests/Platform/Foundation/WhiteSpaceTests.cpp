#include "Platform/Foundation/WhiteSpace.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <string>
#include <utility>

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

TEST(WhiteSpace, CollapsesWhereverItStands) {
    const std::pair<std::string, std::string> cases[]{
        {"", ""},
        {" \n\u3000", ""},
        {"a", "a"},
        {"  a  b\t\r\nc ", "a b c"},
        {"\u00A0ä\u2003\u2028é\u1680", "ä é"},
        {"a\u200Bb \xC2", "a\u200Bb \xC2"},
        {"\xE2\x80 \xE2\x80", "\xE2\x80 \xE2\x80"},
    };
    for (const auto& [text, expected] : cases) {
        std::string collapsed = text;
        collapseWhiteSpace(collapsed);
        EXPECT_EQ(collapsed, expected) << '"' << text << '"';
    }
}

} // namespace
} // namespace platform
