#include "Host/Drawing/Typesetter.h"

#include "Host/Layout/Measures.h"
#include "Tests/Support/Repeated.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace host {
namespace {

using platform::callout;
using platform::repeated;
using Lines = std::vector<std::string>;

/// Returns `text` without blanks and direction marks, and without the ellipsis that ends it, if any.
std::string essence(std::string text) {
    for (const std::string_view dropped : {" ", "\u200E", "\u200F", "\u3000"}) {
        for (std::size_t at = text.find(dropped); at != std::string::npos; at = text.find(dropped, at)) {
            text.erase(at, dropped.size());
        }
    }
    return text.ends_with("…") ? text.substr(0, text.size() - std::string_view("…").size()) : text;
}

Lines lines(const MeasuredText& measured) {
    Lines texts;
    for (const TextLine& line : measured.lines) {
        texts.push_back(line.text);
    }
    return texts;
}

TEST(Typesetter, LinesKeepWithinTheirRoomAndSayAllThatFits) {
    Typesetter typesetter;
    for (const char* text :
         {"Donaudampfschifffahrtsgesellschaftskapitänsmütze und übergroße Öfen",
          "日本語のタイトルと長い説明文がここに入ります。きっと省略されます。",
          "مرحبا بالعالم، هذا عنوان طويل جدا ينبغي أن يقطع", "שלום mixed with English עולם 123 and more",
          "🎬 Film & 👩‍👩‍👧 family 🇩🇪 holidays 🎉🎉🎉🎉🎉🎉",
          "e\u0301\u0302\u0303 a\u0308\u0308 combining z\u0338", "", "  leading and trailing   "}) {
        for (const double width : {0.0, 3.3, 11.7, 22.0, 31.0, 54.5, 71.0, 92.3, 118.0, 151.0, 192.4, 243.0, 310.0}) {
            for (const std::optional<int> limit : {std::optional<int>(), std::optional(1), std::optional(3)}) {
                const MeasuredText measured = typesetter.measure({text, callout, width, limit});
                const std::string context =
                    text + std::to_string(width) + ": " + testing::PrintToString(lines(measured));
                ASSERT_GE(measured.lines.size(), 1U) << context;
                ASSERT_LE(measured.lines.size(), static_cast<std::size_t>(limit.value_or(100))) << context;
                std::string shown;
                for (const TextLine& line : measured.lines) {
                    // The narrowest line is one character.
                    const bool isNarrowest = g_utf8_strlen(essence(line.text).c_str(), -1) <= 5;
                    ASSERT_TRUE(line.width <= width + 0.02 || isNarrowest) << context;
                    shown += line.text;
                }
                ASSERT_TRUE(essence(text).starts_with(essence(shown))) << context;
                const bool isCut = measured.lines.back().text.ends_with("…");
                ASSERT_EQ(isCut, essence(shown) != essence(text)) << context;
                ASSERT_FALSE(isCut && !limit && measured.lines.size() < Typesetter::maxLineCount) << context;
            }
        }
    }
}

TEST(Typesetter, BreaksBetweenWords) {
    struct Row {
        const char* text;
        double width;
        std::optional<int> limit;
        Lines expected;
    };
    Typesetter typesetter;
    for (const Row& row : std::vector<Row>{{"one two three", 1000, {}, {"one two three"}},
                                           {"one two three", 50, {}, {"one two", "three"}},
                                           {"one two three", 50, 1, {"one tw…"}},
                                           {"one two three", 30, 2, {"one", "tw…"}},
                                           {"one two three", 30, 3, {"one", "two", "three"}},
                                           {"one two   ", 46, 1, {"one two"}},
                                           {"incomprehensibly", 50, {}, {"incompr", "ehensibl", "y"}},
                                           {"anything", -5, 1, {"…"}},
                                           {"anything", 50, 0, {"anything"}}}) {
        const MeasuredText measured = typesetter.measure({row.text, callout, row.width, row.limit});
        EXPECT_EQ(lines(measured), row.expected) << row.text << row.width;
        // A line is as wide as on its own, with its ellipsis.
        const TextLine& last = measured.lines.back();
        EXPECT_NEAR(last.width, typesetter.measure({.text = last.text, .font = callout}).lines[0].width, 0.01);
    }
}

TEST(Typesetter, ATextIsOneParagraph) {
    Typesetter typesetter;
    const auto line = [&](std::string_view text) {
        return lines(typesetter.measure({.text = text, .font = callout})).front();
    };
    EXPECT_EQ(line("1\n2\r3\r\n4\t5\v6\f7\u00858\u20289\u2029A\u001FB\u007FC\u009FD"), "1 2 3 4 5 6 7 8 9 A B C D");
    EXPECT_EQ(line(std::string_view("a\0b\n\nc", 6)), "a b  c");
    // No other character is touched.
    const std::string kept = "soft\u00ADhyphen no\u00A0break zero\u200Bwidth \u2060 \uFFFC";
    EXPECT_EQ(line(kept), kept);
    EXPECT_NE(line("a\xFF\xC3"), "") << "what is not UTF-8 is shown as something";
}

TEST(Typesetter, LongTextsGiveWhatTheirBeginningGives) {
    Typesetter typesetter;
    for (const char* piece : {"W", "i", "word ", "日本", "e\u0301", "\u200B", "مرحبا "}) {
        const std::string some = repeated(piece, 4'000);
        const MeasuredText expected = typesetter.measure({some + "end", callout, 250, 3});
        const MeasuredText found = typesetter.measure({some + repeated(piece, 8'000) + "end", callout, 250, 3});
        EXPECT_EQ(found.lines.size(), expected.lines.size()) << piece;
        EXPECT_TRUE(found.lines == expected.lines || !expected.lines.back().text.ends_with("…")) << piece;
    }
    // A word after a very long blank: nothing may be shown as if it were all.
    EXPECT_EQ(lines(typesetter.measure({"one" + std::string(5'000, ' ') + "two", callout, 250, 1})), Lines{"one…"});

    const std::string endless = repeated("endless ", 20'000);
    const TextLine line = typesetter.measure({.text = endless, .font = callout}).lines.at(0);
    EXPECT_NEAR(line.width, Typesetter::maxLineWidth * 0.975, Typesetter::maxLineWidth * 0.025 + 0.02);
    EXPECT_TRUE(line.text.ends_with("…"));
    EXPECT_EQ(typesetter.measure({endless, callout, 1, {}}).lines.size(), std::size_t{Typesetter::maxLineCount});
}

} // namespace
} // namespace host
