// UTF-8 and white space, with ICU as the reference.

#include "Platform/Foundation/Utf8.h"
#include "Platform/Foundation/WhiteSpace.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <string>

namespace platform {
namespace {

TEST(Utf8, IsWhatIcuAccepts) {
    // Those beside the limits of the encoding's ranges.
    constexpr std::string_view bytes = "A\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xDF\xE0\xE1\xED\xEF\xF0\xF1\xF4\xF5";
    // As long as a word, and then more ASCII.
    for (const std::string start : {"", "12345678a"}) {
        std::string text = start + "1234";
        for (std::size_t number = 0; number < bytes.size() * bytes.size() * bytes.size() * bytes.size(); ++number) {
            for (std::size_t index = 0, rest = number; index < 4; ++index, rest /= bytes.size()) {
                text[start.size() + index] = bytes[rest % bytes.size()];
            }
            UErrorCode error = U_ZERO_ERROR;
            u_strFromUTF8(nullptr, 0, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &error);
            ASSERT_EQ(isUtf8(text), error == U_BUFFER_OVERFLOW_ERROR) << text;
        }
    }
}

TEST(Characters, AreWrittenAndClassifiedAsByIcu) {
    for (char32_t character = 0; character < 0x110010; ++character) {
        const auto scalar = isCharacter(character) ? static_cast<UChar32>(character) : 0xFFFD;
        const bool isWhite = u_isUWhiteSpace(scalar) != 0;
        std::string expected = "x";
        icu::UnicodeString(scalar).toUTF8String(expected);
        std::string text = "x";
        appendUtf8(text, character);
        ASSERT_EQ(text, expected);
        const std::string_view written = std::string_view(text).substr(1);
        ASSERT_EQ(leadingWhiteSpace(written), isWhite ? written.size() : 0) << scalar;
        ASSERT_EQ(trimmed(text).size(), isWhite ? 1 : text.size()) << scalar;
    }
}

TEST(WhiteSpace, IsTrimmedAndCollapsed) {
    const std::tuple<std::string, std::string, std::string> rows[]{
        {"", "", ""},
        {" \n\u3000\u00A0", "", ""},
        {"  a  b\t\r\nc ", "a  b\t\r\nc", "a b c"},
        {"\u00A0ä\u2003\u2028é\u1680", "ä\u2003\u2028é", "ä é"},
        {"a\u200Bb \xC2", "a\u200Bb \xC2", "a\u200Bb \xC2"},
        // Characters that are cut off.
        {"\xE2\x80 \xE2\x80", "\xE2\x80 \xE2\x80", "\xE2\x80 \xE2\x80"},
        {"\xA0", "\xA0", "\xA0"},
    };
    for (const auto& [text, expectedTrimmed, expectedCollapsed] : rows) {
        EXPECT_EQ(trimmed(text), expectedTrimmed);
        std::string collapsed = text;
        collapseWhiteSpace(collapsed);
        EXPECT_EQ(collapsed, expectedCollapsed) << '"' << text << '"';
    }
}

} // namespace
} // namespace platform
