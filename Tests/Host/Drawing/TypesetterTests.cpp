#include "Host/Drawing/Typesetter.h"

#include "Host/Layout/Measures.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace host {
namespace {

using platform::callout;

/// `text` without blanks and direction marks, and without the ellipsis that ends it if there is one.
std::string essence(std::string text) {
    for (const std::string_view dropped : {" ", "\u200E", "\u200F", "\u3000"}) {
        for (std::size_t at = text.find(dropped); at != std::string::npos; at = text.find(dropped, at)) {
            text.erase(at, dropped.size());
        }
    }
    if (text.ends_with("…")) {
        text.erase(text.size() - std::string_view("…").size());
    }
    return text;
}

std::vector<std::string> lines(const MeasuredText& measured) {
    std::vector<std::string> texts;
    for (const TextLine& line : measured.lines) {
        texts.push_back(line.text);
    }
    return texts;
}

std::string repeated(std::string_view piece, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

const std::vector<std::string> samples{
    "A short history of the index card",
    "Donaudampfschifffahrtsgesellschaftskapitänsmütze und übergroße Öfen",
    "日本語のタイトルと長い説明文がここに入ります。きっと省略されます。",
    "مرحبا بالعالم، هذا عنوان طويل جدا ينبغي أن يقطع",
    "שלום mixed with English עולם 123 and more",
    "🎬 Film & 👩‍👩‍👧 family 🇩🇪 holidays 🎉🎉🎉🎉🎉🎉",
    "e\u0301\u0302\u0303 a\u0308\u0308 combining z\u0338",
    "1234567890123456789012345678901234567890",
    "a",
    "",
    "   ",
    "  leading and trailing   ",
};

TEST(Typesetter, LinesKeepWithinTheirRoomAndSayAllThatFits) {
    Typesetter typesetter;
    for (const std::string& text : samples) {
        for (const platform::Font font : {platform::caption2, callout, platform::headline}) {
            for (const double width :
                 {0.0, 3.3, 11.7, 22.0, 31.0, 54.5, 71.0, 92.3, 118.0, 151.0, 192.4, 243.0, 310.0}) {
                for (const std::optional<int> limit : {std::optional<int>(), std::optional(1), std::optional(3)}) {
                    const MeasuredText measured = typesetter.measure({text, font, width, limit});
                    const std::string context =
                        '"' + text + "\" in " + std::to_string(width) + ": " + testing::PrintToString(lines(measured));
                    ASSERT_GE(measured.lines.size(), 1U) << context;
                    ASSERT_LE(measured.lines.size(), static_cast<std::size_t>(limit.value_or(100))) << context;

                    std::string shown;
                    for (const TextLine& line : measured.lines) {
                        // The narrowest line is one character.
                        const bool isSmallest = g_utf8_strlen(essence(line.text).c_str(), -1) <= 5;
                        ASSERT_TRUE(line.width <= width + 0.02 || isSmallest) << context;
                        shown += line.text;
                    }
                    const std::string whole = essence(text);
                    const std::string part = essence(shown);
                    ASSERT_TRUE(whole.starts_with(part)) << context;
                    const bool isCut = measured.lines.back().text.ends_with("…");
                    ASSERT_EQ(isCut, part != whole) << context;
                    if (!limit && measured.lines.size() < Typesetter::maxLineCount) {
                        ASSERT_FALSE(isCut) << context;
                    }
                }
            }
        }
    }
}

TEST(Typesetter, BreaksBetweenWords) {
    struct Case {
        const char* text;
        double width;
        std::optional<int> limit;
        std::vector<std::string> lines;
    };
    const std::vector<Case> cases{
        {"one two three", 1000, {}, {"one two three"}},
        {"one two three", 50, {}, {"one two", "three"}},
        {"one two three", 50, 1, {"one tw…"}},
        {"one two three", 30, 2, {"one", "tw…"}},
        {"one two three", 30, 3, {"one", "two", "three"}},
        {"one two   ", 46, 1, {"one two"}},
        {"incomprehensibly", 50, {}, {"incompr", "ehensibl", "y"}},
        {"", 50, 1, {""}},
        {"anything", 0, 1, {"…"}},
        {"anything", -5, 1, {"…"}},
        {"anything", 50, 0, {"anything"}},
    };
    Typesetter typesetter;
    for (const Case& c : cases) {
        const MeasuredText measured = typesetter.measure({c.text, callout, c.width, c.limit});
        EXPECT_EQ(lines(measured), c.lines) << c.text << c.width;
        // A line is as wide as on its own, with its ellipsis.
        const std::string& last = measured.lines.back().text;
        EXPECT_NEAR(measured.lines.back().width, typesetter.measure({.text = last, .font = callout}).lines[0].width,
                    0.01)
            << last;
    }
}

TEST(Typesetter, ATextIsOneParagraph) {
    Typesetter typesetter;
    for (const char* text : {"one\ntwo", "one\rtwo", "one\r\ntwo", "one\ttwo", "one\vtwo", "one\ftwo", "one\u0085two",
                             "one\u2028two", "one\u2029two", "one\u001Ftwo", "one\u007Ftwo", "one\u009Ftwo"}) {
        EXPECT_EQ(lines(typesetter.measure({.text = text, .font = callout})), std::vector<std::string>{"one two"});
    }
    EXPECT_EQ(lines(typesetter.measure({.text = std::string_view("a\0b\n\nc", 6), .font = callout})),
              std::vector<std::string>{"a b  c"});
    // No other character is touched.
    const std::string kept = "soft\u00ADhyphen no\u00A0break zero\u200Bwidth \u2060 \uFFFC";
    EXPECT_EQ(lines(typesetter.measure({.text = kept, .font = callout})), std::vector<std::string>{kept});
    // Bytes that are no UTF-8 are shown as something, not trusted.
    EXPECT_EQ(typesetter.measure({.text = "a\xFF\xC3", .font = callout}).lines.size(), 1U);
}

TEST(Typesetter, LongTextsGiveWhatTheirBeginningGives) {
    Typesetter typesetter;
    for (const char* piece : {"W", "i", "word ", "日本", "e\u0301", "\u200B", "مرحبا "}) {
        const std::string some = repeated(piece, 4'000);
        const std::string many = some + repeated(piece, 8'000) + "end";
        for (const std::optional<int> limit : {1, 3}) {
            const MeasuredText expected = typesetter.measure({some + "end", callout, 250, limit});
            EXPECT_EQ(lines(typesetter.measure({many, callout, 250, limit})).size(), expected.lines.size()) << piece;
            if (expected.lines.back().text.ends_with("…")) {
                EXPECT_EQ(typesetter.measure({many, callout, 250, limit}).lines, expected.lines) << piece;
            }
        }
    }
    // A blank that never ends, and then a word: nothing may be shown as if it were all.
    EXPECT_EQ(lines(typesetter.measure({"one" + std::string(5'000, ' ') + "two", callout, 250, 1})),
              std::vector<std::string>{"one…"});

    const std::string endless = repeated("endless ", 20'000);
    const MeasuredText line = typesetter.measure({.text = endless, .font = callout});
    ASSERT_EQ(line.lines.size(), 1U);
    EXPECT_LE(line.lines.front().width, Typesetter::maxLineWidth + 0.02);
    EXPECT_GT(line.lines.front().width, Typesetter::maxLineWidth * 0.95);
    EXPECT_TRUE(line.lines.front().text.ends_with("…"));
    EXPECT_EQ(typesetter.measure({endless, callout, 1, {}}).lines.size(),
              static_cast<std::size_t>(Typesetter::maxLineCount));
}

TEST(Typesetter, BaselinesAreThoseOfTheFontCenteredInTheLine) {
    Typesetter typesetter;
    for (const platform::TextStyle style :
         {platform::TextStyle::caption2, platform::TextStyle::caption, platform::TextStyle::callout,
          platform::TextStyle::headline, platform::TextStyle::title3, platform::TextStyle::largeTitle}) {
        const TextMeasures measures = textMeasures({style, {}});
        // Inter rises 0.96875 and falls 0.24121 of its size.
        const double expected = measures.lineHeight / 2 + measures.size * (0.96875 - 0.24121) / 2;
        for (const char* text : {"Text", "日本語", ""}) {
            EXPECT_NEAR(typesetter.measure({.text = text, .font = {style, {}}}).baseline, expected, 0.05);
        }
    }
}

} // namespace
} // namespace host
