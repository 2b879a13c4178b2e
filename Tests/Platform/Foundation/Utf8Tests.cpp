#include "Platform/Foundation/Utf8.h"
#include "Platform/Foundation/XMLCharacters.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace platform {
namespace {

bool isUtf8CharacterByCharacter(std::string_view text) {
    while (!text.empty()) {
        const Utf8Sequence sequence = leadingUtf8Sequence(text);
        if (!sequence.isCharacter) {
            return false;
        }
        text.remove_prefix(sequence.length);
    }
    return true;
}

TEST(Utf8, IsTheSameInBlocksAsByCharacters) {
    const char* const characters[]{"a", "b", "c", "d", "word", "ä", "ß", "\u0080", "\u07FF", "–", "💡"};
    const char* const faults[]{"\xC3",     "\xA4",         "\xC0\x80",         "\xC1\xBF",
                               "\xE2\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"};
    std::mt19937 source(7);
    int valid = 0;
    for (int count = 0; count < 30'000; ++count) {
        // Mostly of one and two bytes, which go by blocks.
        const std::size_t kinds = source() % 2 == 0 ? std::size(characters) : 9;
        std::string text;
        for (auto length = source() % 60; length > 0; --length) {
            text += characters[source() % kinds];
        }
        if (source() % 2 == 0) {
            text.insert(source() % (text.size() + 1), faults[source() % std::size(faults)]);
        }
        const bool expected = isUtf8CharacterByCharacter(text);
        valid += expected ? 1 : 0;
        ASSERT_EQ(isUtf8(text), expected) << text;
        ASSERT_EQ(isXmlText(text), expected) << text;
    }
    EXPECT_GT(valid, 10'000);
    EXPECT_LT(valid, 20'000);
}

TEST(Utf8, IsXmlTextWithoutWhatXmlForbids) {
    using namespace std::string_literals;
    for (std::size_t before = 0; before < 40; ++before) {
        const std::string text(before, 'x');
        for (const std::string& forbidden : {"\0"s, "\x08"s, "\x0B"s, "\x1F"s, "\uFFFE"s, "\uFFFF"s}) {
            EXPECT_FALSE(isXmlText(text + forbidden + "y")) << before;
        }
        EXPECT_TRUE(isXmlText(text + "\t\r\n \x7F\u0085\uFFFD\uD7FF\uE000\U0010FFFF"));
    }
}

} // namespace
} // namespace platform
