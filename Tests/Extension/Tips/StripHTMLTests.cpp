#include "Extension/Tips/RSSParser.h"

#include <gtest/gtest.h>

#include <string>

namespace foliovault {
namespace {

using namespace std::string_literals;

TEST(StripHTML, MakesOneLineOfPlainText) {
    const std::pair<std::string, std::string> rows[]{
        {"<p>One <b>two</b></p>\n<p>three</p>", "One two three"},
        {"<p>One</p><p>two</p>", "Onetwo"},
        // Tags: at least one character, up to the first ">", over lines.
        {"a<>b>c", "a<>b>c"},
        {"a<<b>c", "ac"},
        {"a<b\nc=\"d\">e", "ae"},
        {"a<b c='>'>d", "a'>d"},
        {"a <!-- b > c --> d", "a c --> d"},
        {"<><a>b", "<>b"},
        // Tags go before entities are decoded, and what stood around them meets.
        {"&lt;p&gt;Hi&amp;nbsp;there&lt;/p&gt;", "<p>Hi&nbsp;there</p>"},
        {"a&nb<!-- -->sp;b", "a b"},
        // Named entities, each once, "&amp;" last.
        {"&lt;&gt;&quot;&apos;", "<>\"'"},
        {"&amp;amp;lt;", "&amp;lt;"},
        {"&AMP; &Lt; &hellip; &lt &;", "&AMP; &Lt; &hellip; &lt &;"},
        // Numeric ones after them, decimal before hexadecimal.
        {"&#8217;&#x1F4A1;&#x1f4a1;", "’💡💡"},
        {"&#X41; &#55296; &#xD800; &#x110000; &#4294967296; &#99999999999999999999;",
         "&#X41; &#55296; &#xD800; &#x110000; &#4294967296; &#99999999999999999999;"},
        {"&#; &#x; &#12 &#1a; &#-1; &# 65;", "&#; &#x; &#12 &#1a; &#-1; &# 65;"},
        {"&#38;#x41;", "A"},
        {"&&#35;x41;", "A"},
        // White space at last, decoded or not.
        {" a&nbsp;&nbsp;b \r\n\t c\u2003\u3000d\u0085", "a b c d"},
        {"a\u200Bb", "a\u200Bb"},
    };
    for (const auto& [html, text] : rows) {
        EXPECT_EQ(RSSParser::stripHTML(html), text) << html;
    }
}

TEST(StripHTML, DecodesScalars) {
    EXPECT_EQ(RSSParser::decodeNumericEntities("<&lt;> &#65;  &#x42;"), "<&lt;> A  B");
    const std::pair<std::string_view, std::string> rows[]{
        {"41", "A"},  {"e4", "ä"},        {"E4", "ä"},        {"1F4A1", "💡"},
        {"0", "\0"s}, {"D7FF", "\uD7FF"}, {"E000", "\uE000"}, {"10FFFF", "\U0010FFFF"}};
    for (const auto& [digits, expected] : rows) {
        EXPECT_EQ(RSSParser::decodeScalar(digits, 16), expected) << digits;
    }
    for (const std::string_view refused : {"D800", "DFFF", "110000", "100000041", "", "-41", "0x41", "41 "}) {
        EXPECT_EQ(RSSParser::decodeScalar(refused, 16), std::nullopt) << refused;
    }
    EXPECT_EQ(RSSParser::decodeScalar("65", 10), "A");
    EXPECT_EQ(RSSParser::decodeScalar("A", 10), std::nullopt);
}

/// A quadratic step would take longer than any test may.
TEST(StripHTML, TakesLinearTime) {
    constexpr int size = 1 << 20;
    const auto repeated = [](std::string_view piece) {
        std::string text;
        while (text.size() < size) {
            text += piece;
        }
        return text;
    };
    for (const std::string piece : {"<", "<>", "<a", "&", "&#", "&#x", "&#1", "&#x1", "&lt", "a<b&c", "&amp;#"}) {
        const std::string html = repeated(piece);
        const std::string text = RSSParser::stripHTML(html);
        EXPECT_TRUE(piece == "&amp;#" || text == html) << piece;
    }
    EXPECT_EQ(RSSParser::stripHTML("a<" + repeated("<b") + ">c"), "ac");
    EXPECT_EQ(RSSParser::stripHTML("a" + repeated(" \n\u00A0") + "b"), "a b");
    EXPECT_EQ(RSSParser::stripHTML("&#" + repeated("0") + "65;"), "A");
}

} // namespace
} // namespace foliovault
