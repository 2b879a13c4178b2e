// The encodings of XML and text: what tells them, and what is invalid in them.

#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using namespace std::string_literals;

/// ASCII in units of `size` bytes.
std::string widened(std::string_view text, std::size_t size, bool isBigEndian) {
    std::string wide;
    for (const char character : text) {
        const std::string rest(size - 1, '\0');
        wide += isBigEndian ? rest + character : character + rest;
    }
    return wide;
}

std::string declared(std::string_view encoding, std::string_view content) {
    return "<?xml version='1.0' encoding='"s.append(encoding).append("'?><string>").append(content) + "</string>";
}

struct Case {
    std::string_view what;
    std::string file;
    std::string_view expected;
};

TEST(PropertyListEncoding, IsTakenFromMarkAndDeclaration) {
    const std::string xml = "<string>a</string>";
    const std::string utf16 = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + xml;
    const std::vector<Case> cases = {
        {"UTF-8 by its mark", "\xEF\xBB\xBF" + xml, R"("a")"},
        {"text with UTF-8's mark", "\xEF\xBB\xBF{a=b;}", R"({"a": "b"})"},
        {"little-endian UTF-16", "\xFF\xFE" + widened(xml, 2, false), R"("a")"},
        {"big-endian UTF-16", "\xFE\xFF" + widened(xml, 2, true), R"("a")"},
        {"little-endian UTF-32", "\xFF\xFE\0\0"s + widened(xml, 4, false), R"("a")"},
        {"big-endian UTF-32", "\0\0\xFE\xFF"s + widened(xml, 4, true), R"("a")"},
        {"text in UTF-16", "\xFF\xFE" + widened("(a, b)", 2, false), R"(["a", "b"])"},
        {"UTF-16 without a mark, little-endian", widened(utf16, 2, false), R"("a")"},
        {"UTF-16 without a mark, big-endian", widened(utf16, 2, true), R"("a")"},
        {"a mark and a declaration that says otherwise", "\xEF\xBB\xBF" + declared("ISO-8859-1", "ä"), R"("ä")"},
        {"UTF-8 as declared", declared("utf-8", "ä"), R"("ä")"},
        {"Latin 1", declared("ISO-8859-1", "\xE4"), R"("ä")"},
        {"Windows 1252", declared("windows-1252", "\x80"), R"("€")"},
        {"Windows 1251", declared("Windows-1251", "\xE6"), R"("ж")"},
        {"US-ASCII", declared("US-ASCII", "a"), R"("a")"},
        {"blanks around the declaration's equals sign",
         "<?xml version = \"1.0\" encoding\t=\n\"ISO-8859-1\" ?><string>\xE4</string>", R"("ä")"},
        {"a declaration without an encoding", "<?xml version='1.0'?><string>ä</string>", R"("ä")"},
    };
    for (const Case& tested : cases) {
        EXPECT_EQ(canonicalText(tested.file), tested.expected) << tested.what;
    }
    expectRefused(declared("no-such-encoding", "a"), declared("US-ASCII//IGNORE", "\xE4"), declared("UTF-16", "a"),
                  "<string>\xE4</string>", declared("US-ASCII", "ä"), "\xFF\xFE" + widened(xml, 2, false) + "\n",
                  "\xFE\xFF" + widened("<string>", 2, true) + "\xD8\x00"s + widened("</string>", 2, true),
                  "\0\0\xFE\xFF"s + widened("<string>", 4, true) + "\0\x11\0\0"s + widened("</string>", 4, true));
}

TEST(PropertyListEncoding, InvalidBytesAreAnErrorEverywhere) {
    for (const std::string invalid :
         {"\x80", "\xC0\x80", "\xE4", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF", "\xE2\x82"}) {
        expectRefused(invalid + "<true/>", "<!--" + invalid + "--><true/>", "<?p " + invalid + "?><true/>",
                      "<!DOCTYPE " + invalid + "><true/>", "<plist a='" + invalid + "'><true/></plist>",
                      "<string>&amp;" + invalid + "</string>", "<string><![CDATA[" + invalid + "]]></string>",
                      "<data>AAAA" + invalid + "</data>", "<dict><key>" + invalid + "</key><true/></dict>",
                      "<true/><!--" + invalid + "-->");
    }
}

} // namespace
} // namespace platform
