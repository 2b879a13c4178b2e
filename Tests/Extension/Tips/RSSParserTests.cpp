#include "Extension/Tips/RSSParser.h"

#include "Tests/Support/Repeated.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace foliovault {
namespace {

using namespace std::string_literals;
using platform::Date;
using Rows = std::vector<std::string>;

const std::string march4 = "<pubDate>Tue, 04 Mar 2025 09:30:00 +0100</pubDate>";
const std::string march5 = "<pubDate>Wed, 05 Mar 2025 09:30:00 +0100</pubDate>";
const std::string isTip = "<category>Tips</category>";

std::string feed(const std::string& items) {
    return "<rss version=\"2.0\"><channel><title>Blog</title><link>https://a.example</link>" + items +
           "</channel></rss>";
}

std::string item(const std::string& content, const std::string& date = march4) {
    return "<item>" + content + isTip + date + "</item>\n";
}

std::string titled(const std::string& title, const std::string& date = march4) {
    return item("<title>" + title + "</title>", date);
}

/// Returns "title|description|link|guid" of each tip.
Rows shown(const std::vector<TipItem>& tips) {
    Rows rows;
    for (const TipItem& tip : tips) {
        rows.push_back(tip.title + "|" + tip.description + "|" + tip.link + "|" + tip.guid);
    }
    return rows;
}

Rows tipsOf(const std::string& document) {
    return shown(RSSParser::parseTips(document));
}

TEST(RSSParser, TakesAnElementsTextAsFeedsWriteIt) {
    const std::pair<std::string, std::string> rows[]{
        {"\n <title> A &amp; B\n</title><link>\t//a?b&#38;c </link><guid isPermaLink=\"false\"> g 1 </guid>"
         "<media:title>Other</media:title><description><![CDATA[<p>One <b>&amp;</b>\n two&nbsp;</p>]]></description>",
         "A & B|One & two|//a?b&c|g 1"},
        {"<title>a<b>c</b>d</title>", "cd|||"},
        {"<title>a<!-- b -->c<![CDATA[ <d> ]]>&lt;</title>", "ac <d> <|||"},
        {"<title>T</title><description><![CDATA[a]]>b<![CDATA[c]]></description>", "T|abc||"},
        {"<title>T</title><link>l</link><guid>\n</guid>", "T||l|l"},
        // An item in an item begins anew, and its end is the end of both.
        {"<title>T</title><link>l</link>" + titled("U") + "<title>V</title>", "U|||"},
    };
    for (const auto& [content, expected] : rows) {
        EXPECT_EQ(tipsOf(feed(item(content))), Rows{expected}) << content;
    }
}

TEST(RSSParser, KnowsATipFromOtherItems) {
    const std::string title = "<title>T</title>";
    const std::pair<std::string, bool> rows[]{
        {title + march4 + "<category domain='x'>\n tIpS\u00A0</category>", true},
        {title + march4 + isTip + "<category>News</category>", true},
        {title + march4 + "<category>tips, news</category>", false},
        {title + march4 + "<category>tipſ</category>", false},
        {title + march4 + "<Category>tips</Category>", false},
        {title + march4 + "<media:category>tips</media:category>", false},
        {title + march4, false},
        {"<title> \n</title>" + isTip + march4, false},
        {title + isTip + "<pubDate>2025-03-04</pubDate>", false},
        {title + isTip + "<pubDate>Sat, 01 Jan 0001 00:00:00 GMT</pubDate>", false},
    };
    for (const auto& [content, isRead] : rows) {
        EXPECT_EQ(tipsOf(feed("<item>" + content + "</item>")).size(), isRead ? 1U : 0U) << content;
    }
    const std::string between = "text" + title + "<link>other</link><guid>other</guid>" + isTip + march5;
    const std::string full = item("<title>A</title><link>l</link><guid>g</guid><description>d</description>");
    EXPECT_EQ(tipsOf(feed(between + full + between + titled("B") + "<item><title>C</title>" + march4 + "</item>")),
              (Rows{"A|d|l|g", "B|||"}));
}

TEST(RSSParser, SortsNewestFirstAndElseLeavesTheOrder) {
    std::string items;
    for (char title = 'a'; title <= 'r'; ++title) {
        items += titled(std::string(1, title));
    }
    // The same moment, and an older one that is written as a later time.
    items += titled("s", "<pubDate>Tue, 04 Mar 2025 08:30:00 GMT</pubDate>");
    items += titled("u", "<pubDate>Tue, 04 Mar 2025 10:00:00 +0200</pubDate>");
    std::string order;
    for (const TipItem& tip : RSSParser::parseTips(feed(items + titled("t", march5)))) {
        order += tip.title;
    }
    EXPECT_EQ(order, "tabcdefghijklmnopqrsu");
}

TEST(RSSParser, KeepsWhatWasCompleteBeforeAnError) {
    const std::pair<std::string, Rows> rows[]{
        {feed(titled("A") + "&nbsp;" + titled("B")), {"A|||"}},
        {feed(titled("A") + "<br>" + titled("B")), {"A|||", "B|||"}},
        {feed(titled("A") + item("<title><![CDATA[B]]")), {"A|||"}},
        {" <?xml version='1.0'?>" + feed(titled("A")), {}},
        {"<feed xmlns='http://www.w3.org/2005/Atom'><entry><title>T</title><category term='tips'/></entry></feed>", {}},
        {titled("A"), {"A|||"}},
    };
    for (const auto& [document, expected] : rows) {
        EXPECT_EQ(tipsOf(document), expected) << document;
    }
    RSSParser parser;
    parser.didStartElement("item");
    parser.didStartElement("category");
    parser.foundCDATA("tips");
    parser.foundCDATA("\xE4");
    parser.didEndElement("category");
    parser.didStartElement("title");
    parser.foundCDATA("ä");
    parser.didEndElement("title");
    parser.didEndElement("item");
    EXPECT_EQ(shown(parser.items()), Rows{"ä|||"});
    EXPECT_EQ(parser.items().front().pubDate, Date::distantPast());
}

TEST(StripHTML, MakesOneLineOfPlainText) {
    const std::pair<std::string, std::string> rows[]{
        {"<p>One <b>two</b></p>\n<p>three</p>", "One two three"},
        // Tags: at least one character, up to the first ">", over lines.
        {"a<>b>c", "a<>b>c"},
        {"a<b\nc=\"d\">e", "ae"},
        {"<><a>b", "<>b"},
        // Tags go before entities are decoded, and the texts around them meet.
        {"&lt;p&gt;Hi&amp;nbsp;there&lt;/p&gt;", "<p>Hi&nbsp;there</p>"},
        {"a&nb<!-- -->sp;b", "a b"},
        // Named entities, each once, "&amp;" last.
        {"&lt;&gt;&quot;&apos;", "<>\"'"},
        {"&amp;amp;lt;", "&amp;lt;"},
        {"&AMP; &Lt; &hellip; &lt &;", "&AMP; &Lt; &hellip; &lt &;"},
        // Numeric ones after them, decimal before hexadecimal.
        {"&#8217;&#x1F4A1;&#x1f4a1;", "’💡💡"},
        {"&#xD7FF;&#xE000;&#x10FFFF;", "\uD7FF\uE000\U0010FFFF"},
        {"&#X41; &#55296; &#xDFFF; &#x110000; &#4294967361;", "&#X41; &#55296; &#xDFFF; &#x110000; &#4294967361;"},
        {"&#; &#x; &#12 &#1a; &#-1; &# 65;", "&#; &#x; &#12 &#1a; &#-1; &# 65;"},
        {"&#38;#x41;", "A"},
        {"&&#35;x41;", "A"},
        // White space at last, decoded or not.
        {" a&nbsp;&nbsp;b \r\n\t c\u2003\u3000d\u0085", "a b c d"},
    };
    for (const auto& [html, text] : rows) {
        EXPECT_EQ(RSSParser::stripHTML(html), text) << html;
    }
    EXPECT_EQ(RSSParser::decodeNumericEntities("<&lt;> &#65;  &#x42;"), "<&lt;> A  B");
    EXPECT_EQ(RSSParser::decodeScalar("e4", 16), "ä");
    EXPECT_EQ(RSSParser::decodeScalar("0", 16), "\0"s);
    for (const std::string_view refused : {"", "-41", "0x41", "41 ", "A"}) {
        EXPECT_EQ(RSSParser::decodeScalar(refused, 10), std::nullopt) << refused;
    }
}

/// A quadratic step would take longer than any test may.
TEST(StripHTML, TakesLinearTime) {
    const auto many = [](std::string_view piece) { return platform::repeated(piece, (1U << 19U) / piece.size()); };
    for (const char* piece : {"<", "<>", "<a", "&", "&#", "&#x", "&#1", "&#x1", "&lt", "a<b&c"}) {
        const std::string html = many(piece);
        EXPECT_TRUE(RSSParser::stripHTML(html) == html) << piece;
    }
    EXPECT_EQ(RSSParser::stripHTML("a<" + many("<b") + ">c"), "ac");
    EXPECT_EQ(RSSParser::stripHTML("a" + many(" \n\u00A0") + "b"), "a b");
    EXPECT_EQ(RSSParser::stripHTML("&#" + many("0") + "65;"), "A");
    EXPECT_EQ(RSSParser::parseTips(titled("<![CDATA[" + many("<b ") + "]]>")).size(), 1U);
}

} // namespace
} // namespace foliovault
