#include "Extension/Tips/RSSParser.h"

#include <gtest/gtest.h>

#include <string>

namespace foliovault {
namespace {

using namespace std::string_literals;

TEST(StripHTML, MakesOneLineOfPlainText) {
    const std::pair<std::string, std::string> rows[]{
        {"", ""},
        {"<p>One <b>two</b></p>\n<p>three</p>", "One two three"},
        {"<p>One</p><p>two</p>", "Onetwo"},
        // Tags: at least one character, up to the first ">", over lines.
        {"a<>b", "a<>b"},
        {"a<>b>c", "a<>b>c"},
        {"a<<b>c", "ac"},
        {"a<b\nc=\"d\">e", "ae"},
        {"a<b c='>'>d", "a'>d"},
        {"1 < 2 > 3", "1 3"},
        {"a <!-- b > c --> d", "a c --> d"},
        {"a<b", "a<b"},
        {"<><a>b", "<>b"},
        // Tags go before entities are decoded, and what stood around them meets.
        {"&lt;p&gt;Hi&amp;nbsp;there&lt;/p&gt;", "<p>Hi&nbsp;there</p>"},
        {"&l<i>t;", "<"},
        {"a&nb<!-- -->sp;b", "a b"},
        // Named entities, each once, "&amp;" last.
        {"&lt;&gt;&quot;&apos;", "<>\"'"},
        {"&amp;amp;lt;", "&amp;lt;"},
        {"&AMP; &Lt; &hellip; &lt &;", "&AMP; &Lt; &hellip; &lt &;"},
        // Numeric ones after them, decimal before hexadecimal.
        {"&amp;#65;", "A"},
        {"&#8217;&#x1F4A1;&#x1f4a1;", "’💡💡"},
        {"&#X41; &#55296; &#xD800; &#x110000; &#4294967296; &#99999999999999999999;",
         "&#X41; &#55296; &#xD800; &#x110000; &#4294967296; &#99999999999999999999;"},
        {"&#; &#x; &#12 &#1a; &#-1; &# 65;", "&#; &#x; &#12 &#1a; &#-1; &# 65;"},
        {"&#38;#x41;", "A"},
        {"&#x26;#65;", "&#65;"},
        {"&#38;lt;", "&lt;"},
        {"&&#35;x41;", "A"},
        {"a&#0;b", "a\0b"s},
        // White space at last, decoded or not.
        {" a&nbsp;&nbsp;b \r\n\t c\u2003\u3000d\u0085", "a b c d"},
        {"&#32;a&#160;&#xA0;b&#10;", "a b"},
        {"a\u200Bb", "a\u200Bb"},
    };
    for (const auto& [html, text] : rows) {
        EXPECT_EQ(RSSParser::stripHTML(html), text) << html;
    }
}

TEST(StripHTML, DecodesScalars) {
    EXPECT_EQ(RSSParser::decodeNumericEntities("<&lt;> &#65;  &#x42;"), "<&lt;> A  B");
    const std::pair<std::string_view, std::optional<std::string>> rows[]{
        {"41", "A"},
        {"e4", "ä"},
        {"E4", "ä"},
        {"1F4A1", "💡"},
        {"0", "\0"s},
        {"D7FF", "\uD7FF"},
        {"D800", std::nullopt},
        {"DFFF", std::nullopt},
        {"E000", "\uE000"},
        {"10FFFF", "\U0010FFFF"},
        {"110000", std::nullopt},
        {"100000041", std::nullopt},
        {"", std::nullopt},
        {"-41", std::nullopt},
        {"0x41", std::nullopt},
        {"41 ", std::nullopt},
    };
    for (const auto& [digits, expected] : rows) {
        EXPECT_EQ(RSSParser::decodeScalar(digits, 16), expected) << digits;
    }
    EXPECT_EQ(RSSParser::decodeScalar("65", 10), "A");
    EXPECT_EQ(RSSParser::decodeScalar("A", 10), std::nullopt);
}

/// A quadratic step would take longer than any test may.
TEST(StripHTML, TakesLinearTime) {
    constexpr int size = 4 << 20;
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
