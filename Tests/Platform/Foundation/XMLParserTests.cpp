#include "Platform/Foundation/XMLParser.h"

#include "Tests/Support/Repeated.h"

#include <gtest/gtest.h>

#include <string>

namespace platform {
namespace {

/// The report as a text: "(a" and ")a" for an element, characters as they are, "[…]" for a section.
class Recorder final : public XMLParserDelegate {
  public:
    void didStartElement(std::string_view name) override { (text += '(').append(name) += ' '; }
    void didEndElement(std::string_view name) override { (text += ')').append(name) += ' '; }
    void foundCharacters(std::string_view characters) override { text += characters; }
    void foundCDATA(std::string_view block) override { (text += '[').append(block) += ']'; }

    std::string text;
};

/// Returns the report, with a "!" if the document is not well-formed.
std::string reported(std::string_view document) {
    Recorder recorder;
    const bool isGood = XMLParser(document, recorder).parse();
    return recorder.text + (isGood ? "" : "!");
}

std::string section(const std::string& content) {
    return "<![CDATA[" + content + "]]>";
}

TEST(XMLParser, ReportsADocumentUpToItsFirstError) {
    const std::string internal = "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY lt '&#38;#60;'><!ENTITY amp '&#38;#38;'>]>";
    const std::pair<std::string, std::string> rows[]{
        {"<?xml version='1.0'?><!--c--><a b='1' c:d='&lt;'><m:e/><?p q?>x<!-- <b> -->y</a>\n", "(a (m:e )m:e xy)a "},
        {"<a>1 &lt; 2 &amp;&amp; &quot;&apos;&gt; &#65;&#x1F4A1;\r\n</a>", "(a 1 < 2 && \"'> A💡\n)a "},
        {"<a>" + section("") + section("<b>&amp;</b>") + "x" + section("1\r\n2\r]") + "</a>",
         "(a [][<b>&amp;</b>]x[1\n2\n]])a "},
        {"<a>" + section(std::string(3000, 'x')) + "z</a>", "(a [" + std::string(3000, 'x') + "]z)a "},
        // Errors.
        {"<a/><b/>", "(a )a !"},
        {"<a>1" + section("x") + "<b>" + section("y") + "</a>", "(a 1[x](b [y]!"},
        {"<a><![CDATA[x]] ></a>", "(a !"},
        {"<a><b/>" + section("1\x01") + "<c/></a>", "(a (b )b !"},
        // Five entities and no others.
        {"<a>1&nbsp;2</a>", "(a 1!"},
        {internal + "<a>1&lt;&amp;2</a>", "(a 1<&2)a "},
        {internal + "<a>1<b/>&e;2</a>", "(a 1(b )b !"},
        {internal + "<a b='&e;'>1</a>", "(a 1)a "},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>1&e;2</a>", "(a 1!"},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'http://127.0.0.1:9/'> %p; ]><a>1&e;2</a>", "(a 1!"},
        {"<!DOCTYPE a PUBLIC '-//X' 'rss.dtd'><a>1</a>", "(a 1)a "},
        // Encodings, as far as they are valid.
        {"<?xml version='1.0' encoding='windows-1252'?><a>1<b/>\x81<c/></a>", "(a 1(b )b !"},
        {"<?xml version='1.0' encoding='unknown'?><a/>", "!"},
        {{"\0<\0a\0/\0>", 8}, "!"},
    };
    for (const auto& [document, expected] : rows) {
        EXPECT_EQ(reported(document), expected) << document.substr(0, 300);
    }
}

TEST(XMLParser, BoundsWhatADocumentMayTake) {
    EXPECT_EQ(reported(repeated("<a>", 100'000)).size(), std::size_t{3} * XMLParser::maxDepth + 1);
    // Its tag begins and ends the one element too many.
    EXPECT_EQ(reported(repeated("<a>", XMLParser::maxDepth) + "<b/>").find('b'), std::string::npos);
    EXPECT_NE(reported(repeated("<a>", XMLParser::maxDepth - 1) + "<b/>").find(")b"), std::string::npos);

    std::string laughs = "<!DOCTYPE a [<!ENTITY e0 'ha'>";
    for (int i = 1; i < 40; ++i) {
        const std::string before = "&e" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY e" + std::to_string(i) + " '" + before + before + before + "'>";
    }
    EXPECT_EQ(reported(laughs + "]><a>1&e39;</a>"), "(a 1!");
    EXPECT_EQ(reported(laughs + "]><a>1<b c='&e39;'/></a>"), "(a 1!");

    // expat goes through all of them for each element.
    std::string attributes = "<!DOCTYPE a [<!ATTLIST a";
    for (int i = 0; i < XMLParser::maxDeclaredAttributes; ++i) {
        attributes += " a" + std::to_string(i) + " CDATA ''";
    }
    EXPECT_EQ(reported(attributes + ">]><a/>"), "(a )a ");
    EXPECT_EQ(reported(attributes + " b CDATA ''>]><a/>"), "!");
}

} // namespace
} // namespace platform
