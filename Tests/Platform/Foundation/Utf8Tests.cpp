#include "Platform/Foundation/Utf8.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <random>
#include <string>

namespace platform {
namespace {

bool isUtf8ByIcu(const std::string& text) {
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(nullptr, 0, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &error);
    return error == U_BUFFER_OVERFLOW_ERROR || U_SUCCESS(error);
}

TEST(Utf8, IsWhatIcuSaysItIs) {
    const std::string pieces[]{"a",
                               "words and words",
                               "ä",
                               "\u0080",
                               "\u07FF",
                               "\u0800",
                               "\uD7FF",
                               "\uE000",
                               "💡",
                               "\xC3",
                               "\xA4",
                               "\xC0\x80",
                               "\xC1\xBF",
                               "\xE0\x9F\x80",
                               "\xED\xA0\x80",
                               "\xF0\x8F\x80\x80",
                               "\xF4\x90\x80\x80",
                               "\xFF"};
    std::mt19937 source(7);
    int valid = 0;
    for (int count = 0; count < 30'000; ++count) {
        std::string text;
        for (auto length = source() % 8; length > 0; --length) {
            text += pieces[source() % (source() % 4 == 0 ? std::size(pieces) : 9)];
        }
        const bool expected = isUtf8ByIcu(text);
        valid += expected ? 1 : 0;
        ASSERT_EQ(isUtf8(text), expected) << text;
    }
    EXPECT_GT(valid, 10'000);
    EXPECT_LT(valid, 20'000);
}

TEST(Utf8, IsWrittenAsIcuWritesIt) {
    for (char32_t character = 0; character < 0x110010; ++character) {
        std::string expected;
        icu::UnicodeString(isCharacter(character) ? static_cast<UChar32>(character) : 0xFFFD).toUTF8String(expected);
        std::string text;
        appendUtf8(text, character);
        ASSERT_EQ(text, expected) << static_cast<unsigned>(character);
    }
}

} // namespace
} // namespace platform
