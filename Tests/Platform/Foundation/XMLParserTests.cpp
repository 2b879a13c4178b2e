#include "Platform/Foundation/XMLParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform {
namespace {

using namespace std::string_literals;

/// What is reported, as a text: "(a" and ")a" for an element, characters as they are, "[…]" for a section.
class Recorder final : public XMLParserDelegate {
  public:
    void didStartElement(std::string_view name) override { (text += '(').append(name) += ' '; }
    void didEndElement(std::string_view name) override { (text += ')').append(name) += ' '; }
    void foundCharacters(std::string_view characters) override { text += characters; }
    void foundCDATA(std::string_view block) override { (text += '[').append(block) += ']'; }

    std::string text;
};

/// The report, and a "!" where the document is not well-formed.
std::string reported(std::string_view document) {
    Recorder recorder;
    const bool isGood = XMLParser(document, recorder).parse();
    return recorder.text + (isGood ? "" : "!");
}

void expectReports(const std::vector<std::pair<std::string, std::string>>& rows) {
    for (const auto& [document, expected] : rows) {
        EXPECT_EQ(reported(document), expected) << document.substr(0, 300);
    }
}

std::string section(const std::string& content) {
    return "<![CDATA[" + content + "]]>";
}

TEST(XMLParser, ReportsElementsTextsAndSectionsInOrder) {
    expectReports({
        {"<a/>", "(a )a "},
        {"<a b='1' c:d='&lt;'><m:e/> x </a>", "(a (m:e )m:e  x )a "},
        {"<a>1 &lt; 2 &amp;&amp; &quot;&apos;&gt; &#65;&#x1F4A1;</a>", "(a 1 < 2 && \"'> A💡)a "},
        {"<a>\r\n1\r2\n</a>", "(a \n1\n2\n)a "},
        {"<?xml version='1.0'?><?p?><!--c--><a><?p q?>x<!-- <b> -->y</a><!--d-->\n", "(a xy)a "},
        {"\xEF\xBB\xBF<a/>", "(a )a "},
        {"<a>" + section("") + section("<b>&amp;</b>") + "x" + section("]") + "</a>", "(a [][<b>&amp;</b>]x[]])a "},
        {"<a>" + section("1\r\n2\r3\r\r\n") + "</a>", "(a [1\n2\n3\n\n])a "},
        {"<a>" + section("]] ]> & <![CDATA[ ä €]") + section(std::string(3000, 'x')) + "z</a>",
         "(a []] ]> & <![CDATA[ ä €]][" + std::string(3000, 'x') + "]z)a "},
        {"<!DOCTYPE a [<!-- " + section("x") + " --><!ELEMENT a ANY>]><a><!-- " + section("x") + " --></a>", "(a )a "},
    });
}

TEST(XMLParser, ReportsNothingAfterAnError) {
    const std::string valid = "x";
    expectReports({
        {"", "!"},
        {"<a>1<b>2</a>3", "(a 1(b 2!"},
        {"<a/><b/>", "(a )a !"},
        {"<a>1<b c='' c=''/>2</a>", "(a 1!"},
        {"<a>1<b/>]]>2</a>", "(a 1(b )b !"},
        {" <?xml version='1.0'?><a/>", "!"},
        {"<a>1</a>" + section(valid), "(a 1)a !"},
        {"<a>1" + section(valid) + "<b>" + section(valid) + "</a>", "(a 1[" + valid + "](b [" + valid + "]!"},
        {"<a><![CDATA[" + valid + "]]", "(a !"},
        {"<a><![CDATA[" + valid + "]] ></a>", "(a !"},
    });
    // What no document may hold, in texts and in sections.
    for (const std::string& bad : {"\x01"s, "\0"s, "\x0B"s, "\x80"s, "\xC3"s, "\xED\xA0\x80"s, "\uFFFE"s, "\uFFFF"s,
                                   "\xC0\x80"s, "\xF4\x90\x80\x80"s, "\xFF"s}) {
        EXPECT_EQ(reported("<a><b/>" + section("1" + bad) + "<c/></a>"), "(a (b )b !") << bad;
        EXPECT_TRUE(reported("<a><b/>" + bad + "<c/></a>").ends_with("!")) << bad;
    }
}

TEST(XMLParser, KnowsFiveEntitiesAndNoOthers) {
    const std::string internal = "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY lt '&#38;#60;'><!ENTITY amp '&#38;#38;'>]>";
    expectReports({
        {"<a>1&nbsp;2</a>", "(a 1!"},
        {internal + "<a>1&lt;&amp;2</a>", "(a 1<&2)a "},
        {internal + "<a>1<b/>&e;2</a>", "(a 1(b )b !"},
        {internal + "<a b='&e;'>1</a>", "(a 1)a "},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>1&e;2</a>", "(a 1!"},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'http://127.0.0.1:9/'> %p; ]><a>1&e;2</a>", "(a 1!"},
        {"<!DOCTYPE a PUBLIC '-//X' 'rss.dtd'><a>1</a>", "(a 1)a "},
    });
}

TEST(XMLParser, DecodesADocumentAsFarAsItIsValid) {
    const auto declared = [](std::string_view encoding) {
        return "<?xml version='1.0' encoding='"s.append(encoding) + "'?>";
    };
    const auto twice = [&](std::string_view bytes) {
        return "<a>"s.append(bytes) + section(std::string(bytes)) + "</a>";
    };
    const auto utf16 = [](std::string_view ascii) {
        std::string wide;
        for (const char character : ascii) {
            wide += '\0';
            wide += character;
        }
        return wide;
    };
    expectReports({
        {declared("ISO-8859-1") + twice("\xE4\x80"), "(a ä\u0080[ä\u0080])a "},
        {declared("windows-1252") + twice("\xE4\x80"), "(a ä€[ä€])a "},
        {declared("utf-8") + twice("ä€"), "(a ä€[ä€])a "},
        {"\xFE\xFF" + utf16(declared("UTF-16") + twice("a")), "(a a[a])a "},
        {utf16(declared("UTF-16") + twice("a")), "(a a[a])a "},
        {declared("windows-1252") + "<a>1<b/>\x81<c/></a>", "(a 1(b )b !"},
        {"\xFE\xFF" + utf16("<a>1<b/>") + "\xDC\x01" + utf16("<c/></a>"), "(a 1(b )b !"},
        {declared("no-such-encoding") + "<a/>", "!"},
        {declared("UTF-16") + "<a/>", "!"},
        {utf16("<a>1</a>"), "!"},
        {"<a>\xE4</a>", "(a !"},
    });
}

TEST(XMLParser, BoundsWhatADocumentMayTake) {
    const auto nested = [](int depth) {
        std::string document;
        for (int i = 0; i < depth; ++i) {
            document += "<a>";
        }
        return document;
    };
    Recorder recorder;
    EXPECT_FALSE(XMLParser(nested(1'000'000), recorder).parse());
    EXPECT_EQ(recorder.text.size(), std::size_t{3} * XMLParser::maxDepth);
    // The one element too many has its end in its beginning.
    EXPECT_EQ(reported(nested(XMLParser::maxDepth) + "<b/>").find('b'), std::string::npos);
    EXPECT_NE(reported(nested(XMLParser::maxDepth - 1) + "<b/>").find(")b"), std::string::npos);

    std::string laughs = "<!DOCTYPE a [<!ENTITY e0 'ha'>";
    for (int i = 1; i < 40; ++i) {
        const std::string before = "&e" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY e" + std::to_string(i) + " '" + before + before + before + "'>";
    }
    laughs += "]>";
    EXPECT_EQ(reported(laughs + "<a>1&e39;</a>"), "(a 1!");
    EXPECT_EQ(reported(laughs + "<a>1<b c='&e39;'/></a>"), "(a 1!");

    // Each of them would be gone through for each element.
    std::string attributes = "<!DOCTYPE a [<!ATTLIST a";
    for (int i = 0; i < 200'000; ++i) {
        attributes += " a" + std::to_string(i) + " CDATA ''";
    }
    EXPECT_EQ(reported(attributes + ">]><a/>"), "!");
    EXPECT_EQ(reported("<!DOCTYPE a [<!ATTLIST a b CDATA 'c' d CDATA #IMPLIED>]><a/>"), "(a )a ");
}

} // namespace
} // namespace platform
