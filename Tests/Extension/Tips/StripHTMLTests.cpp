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
        {"a<b<c<", "a<b<c<"},
        {"a>b", "a>b"},
        {"<>", "<>"},
        {"<a>", ""},
        {"<", "<"},
        {"<><a>b", "<>b"},
        // Tags go before entities are decoded, and what stood around them meets.
        {"&lt;p&gt;Hi&amp;nbsp;there&lt;/p&gt;", "<p>Hi&nbsp;there</p>"},
        {"&l<i>t;", "<"},
        {"a&nb<!-- -->sp;b", "a b"},
        // Named entities, each once, "&amp;" last.
        {"&lt;&gt;&quot;&apos;", "<>\"'"},
        {"&amp;lt;", "&lt;"},
        {"&amp;amp;lt;", "&amp;lt;"},
        {"&AMP; &Lt; &hellip; &lt &;", "&AMP; &Lt; &hellip; &lt &;"},
        {"&&lt;;", "&<;"},
        // Numeric ones after them, decimal before hexadecimal.
        {"&amp;#65;", "A"},
        {"&#8217;&#x1F4A1;&#x1f4a1;", "’💡💡"},
        {"&#X41; &#55296; &#xD800; &#x110000; &#4294967296; &#99999999999999999999;",
         "&#X41; &#55296; &#xD800; &#x110000; &#4294967296; &#99999999999999999999;"},
        {"&#; &#x; &#12 &#1a; &#-1; &# 65;", "&#; &#x; &#12 &#1a; &#-1; &# 65;"},
        {"&#38;#x41;", "A"},
        {"&#x26;#65;", "&#65;"},
        {"&#38;#65;", "&#65;"},
        {"&#38;lt;", "&lt;"},
        {"&&#35;x41;", "A"},
        {"&#00065;", "A"},
        {"a&#0;b", "a\0b"s},
        // White space at last, decoded or not.
        {" a&nbsp;&nbsp;b \r\n\t c\u2003\u3000d\u0085", "a b c d"},
        {"&#32;a&#160;&#xA0;b&#10;", "a b"},
        {"a\u200Bb", "a\u200Bb"},
        {"&nbsp;", ""},
    };
    for (const auto& [html, text] : rows) {
        EXPECT_EQ(RSSParser::stripHTML(html), text) << html;
    }
}

TEST(StripHTML, DecodesNumericEntitiesAlone) {
    EXPECT_EQ(RSSParser::decodeNumericEntities("<&lt;> &#65;  &#x42;"), "<&lt;> A  B");
}

TEST(StripHTML, DecodesScalars) {
    struct Row {
        std::string_view digits;
        int radix;
        std::optional<std::string> expected;
    };
    const Row rows[]{
        {"65", 10, "A"},
        {"e4", 16, "ä"},
        {"E4", 16, "ä"},
        {"1F4A1", 16, "💡"},
        {"0", 10, "\0"s},
        {"D7FF", 16, "\uD7FF"},
        {"D800", 16, std::nullopt},
        {"DFFF", 16, std::nullopt},
        {"E000", 16, "\uE000"},
        {"10FFFF", 16, "\U0010FFFF"},
        {"110000", 16, std::nullopt},
        {"4294967295", 10, std::nullopt},
        {"4294967361", 10, std::nullopt},
        {"A", 10, std::nullopt},
        {"", 10, std::nullopt},
        {"-65", 10, std::nullopt},
        {"0x41", 16, std::nullopt},
        {"65 ", 10, std::nullopt},
    };
    for (const auto& [digits, radix, expected] : rows) {
        EXPECT_EQ(RSSParser::decodeScalar(digits, radix), expected) << digits;
    }
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
