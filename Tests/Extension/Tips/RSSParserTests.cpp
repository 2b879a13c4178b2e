#include "Extension/Tips/RSSParser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace foliovault {
namespace {

using platform::Date;

const std::string march4 = "<pubDate>Tue, 04 Mar 2025 09:30:00 +0100</pubDate>";
const std::string march5 = "<pubDate>Wed, 05 Mar 2025 09:30:00 +0100</pubDate>";
const std::string isTip = "<category>Tips</category>";

std::string feed(const std::string& items) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<rss version=\"2.0\"><channel><title>Blog</title>"
           "<link>https://a.example</link><description>About</description>" +
           items + "</channel></rss>";
}

std::string item(const std::string& content) {
    return "<item>" + content + "</item>\n";
}

std::string complete(const std::string& title) {
    return item("<title>" + title + "</title>" + isTip + march4);
}

/// "title|description|link|guid" of each tip.
std::vector<std::string> shown(const std::vector<TipItem>& tips) {
    std::vector<std::string> rows;
    for (const TipItem& tip : tips) {
        rows.push_back(tip.title + "|" + tip.description + "|" + tip.link + "|" + tip.guid);
    }
    return rows;
}

std::vector<std::string> tipsOf(const std::string& document) {
    return shown(RSSParser::parseTips(document));
}

using Rows = std::vector<std::string>;

TEST(RSSParser, ReadsTheFieldsOfAnItem) {
    const auto tips =
        RSSParser::parseTips(feed(item("\n <title> A &amp; B\n</title><link>\thttps://a.example/1?b&#38;c </link><guid "
                                       "isPermaLink=\"false\"> g 1 </guid>"
                                       "<description><![CDATA[<p>One <b>&amp;</b>\n two&nbsp;</p>]]></description>" +
                                       isTip + march4 + "<media:title>Other</media:title>")));
    ASSERT_EQ(tips.size(), 1U);
    const TipItem expected{.title = "A & B",
                           .description = "One & two",
                           .link = "https://a.example/1?b&c",
                           .pubDate = Date::fromUnixTime(1'741'077'000),
                           .guid = "g 1"};
    EXPECT_EQ(tips.front(), expected);
}

TEST(RSSParser, KnowsATipFromOtherItems) {
    const auto isRead = [](const std::string& content) { return !tipsOf(feed(item(content))).empty(); };
    const std::string title = "<title>T</title>";
    const std::pair<std::string, bool> rows[]{
        {"<category>TIPS</category>", true},
        {"<category domain='x'>\n tIpS\u00A0</category>", true},
        {"<category>News</category><category>Tips</category>", true},
        {"<a><category>Tips</category></a>", true},
        {"<category>x<b>Tips</b></category>", true},
        {"<category>tips, news</category>", false},
        {"<category>tipſ</category>", false},
        {"<Category>tips</Category>", false},
        {"<media:category>tips</media:category>", false},
        {"", false},
    };
    for (const auto& [content, expected] : rows) {
        EXPECT_EQ(isRead(title + march4 + content), expected) << content;
    }
    for (const std::string& content : {"<title> \n</title>" + isTip + march4, "<Title>T</Title>" + isTip + march4,
                                       title + isTip, title + isTip + "<pubDate>2025-03-04</pubDate>",
                                       title + isTip + "<pubDate>Sat, 01 Jan 0001 00:00:00 GMT</pubDate>"}) {
        EXPECT_FALSE(isRead(content)) << content;
    }
    EXPECT_EQ(tipsOf(feed("<Item><title>T</title>" + isTip + march4 + "</Item>")), Rows());
    EXPECT_EQ(tipsOf(feed(isTip + march4 + item("<title>T</title>"))), Rows());
}

TEST(RSSParser, TakesAnElementsTextAsFeedsWriteIt) {
    const std::string rest = isTip + march4;
    const std::pair<std::string, std::string> rows[]{
        {"<title>a<b>c</b>d</title>", "cd|||"},
        {"<title>a<!-- b -->c<![CDATA[ <d> ]]>&lt;</title>", "ac <d> <|||"},
        {"<title>T</title><description>a<p>b</p></description>", "T|b||"},
        {"<title>T</title><description>&lt;p&gt;a&amp;nbsp;b&lt;/p&gt;</description>", "T|a b||"},
        {"<title>T</title><description><![CDATA[a]]>b<![CDATA[c]]></description>", "T|abc||"},
        {"<title>T<description>d</description>e</title>", "de|d||"},
        {"<title>T</title><image><title>U</title></image>", "U|||"},
        {"<title>T</title><link>l</link><guid>\n</guid>", "T||l|l"},
        {"<title>T</title><guid>g</guid><link>l</link>", "T||l|g"},
        // An item in an item begins anew, and its end is the end of both.
        {"<title>T</title><link>l</link><item><title>U</title>" + rest + "</item><title>V</title>", "U|||"},
    };
    for (const auto& [content, expected] : rows) {
        EXPECT_EQ(tipsOf(feed(item(content + rest))), Rows{expected}) << content;
    }
}

TEST(RSSParser, LetsNothingFromElsewhereIntoAnItem) {
    const std::string between = "text<title>Other</title><link>other</link><guid>other</guid>" + isTip + march5;
    EXPECT_EQ(tipsOf(feed(between + complete("A") + between + complete("B") + between)), (Rows{"A|||", "B|||"}));
    EXPECT_EQ(
        tipsOf(feed(item("<title>A</title><link>l</link><guid>g</guid><description>d</description>" + isTip + march4) +
                    complete("B") + item("<title>C</title>" + march4))),
        (Rows{"A|d|l|g", "B|||"}));
}

TEST(RSSParser, SortsNewestFirstAndElseLeavesTheOrder) {
    const auto dated = [](const std::string& title, const std::string& date) {
        return item("<title>" + title + "</title>" + isTip + date);
    };
    std::string items;
    for (char title = 'a'; title <= 'r'; ++title) {
        items += dated(std::string(1, title), march4);
    }
    // The same moment, and an older one that stands as a later time.
    items += dated("s", "<pubDate>Tue, 04 Mar 2025 08:30:00 GMT</pubDate>");
    items += dated("u", "<pubDate>Tue, 04 Mar 2025 10:00:00 +0200</pubDate>");
    items += dated("t", march5);
    std::string order;
    for (const TipItem& tip : RSSParser::parseTips(feed(items))) {
        order += tip.title;
    }
    EXPECT_EQ(order, "tabcdefghijklmnopqrsu");
}

TEST(RSSParser, KeepsWhatWasCompleteBeforeAnError) {
    const std::string a = complete("A");
    const std::string b = complete("B");
    const std::pair<std::string, Rows> rows[]{
        {feed(a + "&nbsp;" + b), {"A|||"}},
        {feed(a + "<br>" + b), {"A|||", "B|||"}},
        {feed(a + "</br>" + b), {"A|||"}},
        {feed(a + "\xE4" + b), {"A|||"}},
        {feed(a + b) + "<more/>", {"A|||", "B|||"}},
        {" " + feed(a), {}},
        {"nonsense", {}},
        {"<feed xmlns='http://www.w3.org/2005/Atom'><entry><title>T</title><category term='tips'/></entry></feed>", {}},
        // Whatever holds items will do.
        {complete("A"), {"A|||"}},
    };
    for (const auto& [document, expected] : rows) {
        EXPECT_EQ(tipsOf(document), expected) << document;
    }
}

TEST(RSSParser, IsCutOffAnywhere) {
    const std::string first = "<rss>" + complete("A<![CDATA[" + std::string(300, 'x') + "ä]]>");
    const std::string document = first + complete("B") + "</rss>";
    // The line's end after an item does not belong to it.
    const std::size_t secondEnd = document.size() - std::string("\n</rss>").size();
    for (std::size_t size = 0; size <= document.size(); ++size) {
        const std::size_t count = RSSParser::parseTips(document.substr(0, size)).size();
        ASSERT_EQ(count, size < first.size() - 1 ? 0U : size < secondEnd ? 1U : 2U) << size;
    }
}

TEST(RSSParser, DropsASectionThatIsNotUtf8) {
    RSSParser parser;
    parser.didStartElement("item");
    parser.didStartElement("category");
    parser.foundCDATA("tips");
    parser.foundCDATA("\xE4");
    parser.didEndElement("category");
    parser.didStartElement("title");
    parser.foundCharacters("a");
    parser.foundCDATA("\xC3");
    parser.foundCDATA("ä");
    parser.didEndElement("title");
    parser.didEndElement("item");
    EXPECT_EQ(shown(parser.items()), Rows{"aä|||"});
    EXPECT_EQ(parser.items().front().pubDate, Date::distantPast());
}

/// A step that is not linear would take longer than any test may.
TEST(RSSParser, TakesLinearTimeForHostileFeeds) {
    const std::string longTitle(2 << 20, 'x');
    EXPECT_EQ(RSSParser::parseTips(feed(complete(longTitle))).front().title.size(), longTitle.size());
    const auto repeated = [](std::string_view piece) {
        std::string text;
        while (text.size() < 1U << 20U) {
            text += piece;
        }
        return text;
    };
    const std::string start = "<rss>" + complete("A");
    for (const std::string piece : {"<item>", "<a b='c", "<![CDATA[", "<!-- <![CDATA[]]> ", "]]><![CDATA[xxxxxxxx",
                                    "<a/>", "<title>x</title>", "&lt;", "\r\n", "]]"}) {
        for (const std::string before : {"", "<!--", "<item><title><![CDATA[", "<item a='"}) {
            EXPECT_EQ(tipsOf(start + before + repeated(piece)), Rows{"A|||"}) << before << piece;
        }
    }
    EXPECT_EQ(tipsOf(start + item("<description><![CDATA[" + repeated("<b ") + "]]></description><title>B</title>" +
                                  isTip + march4))
                  .size(),
              2U);
}

} // namespace
} // namespace foliovault
