#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

struct Case {
    std::string_view text;
    /// The canonical text, or "error".
    std::string_view expected;
};

std::ostream& operator<<(std::ostream& out, const Case& tested) {
    return out << tested.text;
}

class XmlPropertyList : public testing::TestWithParam<Case> {};

TEST_P(XmlPropertyList, IsReadAsExpected) {
    EXPECT_EQ(canonicalText(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Documents, XmlPropertyList,
                         testing::ValuesIn(std::to_array<Case>({
                             {"<plist><string>a</string></plist>", R"("a")"},
                             {"<string>a</string>", R"("a")"},
                             {"<plist version=\"1.0\" note='a > b'><true/></plist>", "true"},
                             {"  \n<true/>\r\n\t", "true"},
                             {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist><true/></plist>\n", "true"},
                             {"<!-- <a> --><?p >?><plist><!-- - --><true/><?q?></plist><!---->", "true"},
                             {"<!DOCTYPE plist PUBLIC \"-//EXAMPLE//DTD\" \"a>b.dtd\"><plist><true/></plist>", "true"},
                             {"<!DOCTYPE plist [<!ENTITY e \"]>\"><!-- ' ] > --><?p ]>?>]><true/>", "true"},
                             {"<plist><array><true/><false></false><true /><false\n/></array></plist>",
                              "[true, false, true, false]"},
                             {" \n", "error"},
                             {"<", "error"},
                             {"<plist/>", "error"},
                             {"<plist><true/><false/></plist>", "error"},
                             {"<plist><plist><true/></plist></plist>", "error"},
                             {"<plist><true/>", "error"},
                             {"<plist><true/></plist", "error"},
                             {"<plist><true/></array>", "error"},
                             {"<plist><true/></plist><true/>", "error"},
                             {"<true/>text", "error"},
                             {"text<true/>", "error"},
                             {"<!-- <true/>", "error"},
                             {"<?xml <true/>", "error"},
                             {"<!DOCTYPE plist [<true/>", "error"},
                             {"<!DOCTYPE p [<!ENTITY e \"x\">]><string>&e;</string>", "error"},
                             {"<key>a</key>", "error"},
                             {"<unknown/>", "error"},
                             {"<String>a</String>", "error"},
                             {"<array><dictionary/></array>", "error"},
                             {"< true/>", "error"},
                             {"<true/ >", "error"},
                             {"<true//>", "error"},
                             {"</true>", "error"},
                             {"<true> </true>", "error"},
                             {"<string>a</strin>", "error"},
                             {"<string>a</string x>", "error"},
                             {"<string <true/>>a</string>", "error"},
                         })));

INSTANTIATE_TEST_SUITE_P(Containers, XmlPropertyList,
                         testing::ValuesIn(std::to_array<Case>({
                             {"<array/>", "[]"},
                             {"<dict/>", "{}"},
                             {"<dict> </dict>", "{}"},
                             {"<array><array/><dict/><array><string>a</string></array></array>", "[[], {}, [\"a\"]]"},
                             {"<dict><key>b</key><array/><key>a</key><dict><key>a</key><true/></dict></dict>",
                              R"({"a": {"a": true}, "b": []})"},
                             {"<dict><key/><true/></dict>", R"({"": true})"},
                             {"<dict><key>a&amp;<![CDATA[<b>]]></key><true/></dict>", R"({"a&<b>": true})"},
                             {"<dict ><key >a</key ><string >b</string ></dict >", R"({"a": "b"})"},
                             {"<dict><!-- a --><key>a</key><!-- b --><true/><!-- c --></dict>", R"({"a": true})"},
                             {"<dict><key>a</key><true/><key>a</key><false/></dict>", R"({"a": false})"},
                             {"<array></dict>", "error"},
                             {"<array>&amp;</array>", "error"},
                             {"<array><key>a</key></array>", "error"},
                             {"<dict><true/></dict>", "error"},
                             {"<dict><key>a</key></dict>", "error"},
                             {"<dict><key>a</key><key>b</key><true/></dict>", "error"},
                             {"<dict><key>a</key><true/><true/></dict>", "error"},
                             {"<dict><string>a</string><true/></dict>", "error"},
                             {"<dict><key>a</key>b<true/></dict>", "error"},
                             {"<dict><key>a<true/></key><true/></dict>", "error"},
                         })));

INSTANTIATE_TEST_SUITE_P(Strings, XmlPropertyList,
                         testing::ValuesIn(std::to_array<Case>({
                             {"<string/>", R"("")"},
                             {"<string> a </string>", R"(" a ")"},
                             {"<string xml:space='preserve'>a</string>", R"("a")"},
                             {"<string>a > b ' \" ]]></string>", R"("a > b ' \22 ]]>")"},
                             {"<string>&lt;&gt;&amp;&quot;&apos;</string>", R"("<>&\22'")"},
                             {"<string>&#65;&#x42;&#x63;&#00068;</string>", R"("ABcD")"},
                             {"<string>&#xe4;&#x20AC;&#x1F600;&#x10FFFF;</string>", "\"ä€😀\xF4\x8F\xBF\xBF\""},
                             {"<string>&amp;lt;</string>", R"("&lt;")"},
                             {"<string><![CDATA[<a>&amp;]] ]>]]></string>", R"("<a>&amp;]] ]>")"},
                             {"<string>a<![CDATA[]]>b<![CDATA[</string>]]></string>", R"("ab</string>")"},
                             {"<string>a<!-- </string> -->b<?p </string>?>c</string>", R"("abc")"},
                             {"<string>äöü 日本語 😀</string>", R"("äöü 日本語 😀")"},
                             {"<string>a</string", "error"},
                             {"<string>a<true/></string>", "error"},
                             {"<string>a < b</string>", "error"},
                             {"<string>a & b</string>", "error"},
                             {"<string>&nbsp;</string>", "error"},
                             {"<string>&amp</string>", "error"},
                             {"<string>&#x;</string>", "error"},
                             {"<string>&#65a;</string>", "error"},
                             {"<string>&#0;</string>", "error"},
                             {"<string>&#xD800;</string>", "error"},
                             {"<string>&#x110000;</string>", "error"},
                             {"<string><![CDATA[a</string>", "error"},
                             {"<string><!-- a</string>", "error"},
                         })));

INSTANTIATE_TEST_SUITE_P(Scalars, XmlPropertyList,
                         testing::ValuesIn(std::to_array<Case>({
                             {"<integer>+5</integer>", "5"},
                             {"<integer> 5\n</integer>", "5"},
                             {"<integer>0x1F</integer>", "31"},
                             {"<integer>0XfF</integer>", "255"},
                             {"<integer>-0x10</integer>", "-16"},
                             {"<integer>4<!-- and -->2</integer>", "42"},
                             {"<integer>&#52;2</integer>", "42"},
                             {"<integer>9223372036854775807</integer>", "9223372036854775807"},
                             {"<integer>-9223372036854775808</integer>", "-9223372036854775808"},
                             {"<integer>9223372036854775808</integer>", "r9.223372036854776e+18"},
                             {"<integer>18446744073709551615</integer>", "r1.8446744073709552e+19"},
                             {"<integer>18446744073709551616</integer>", "error"},
                             {"<integer>-9223372036854775809</integer>", "error"},
                             {"<integer>0x10000000000000000</integer>", "error"},
                             {"<integer></integer>", "error"},
                             {"<integer>-</integer>", "error"},
                             {"<integer>0x</integer>", "error"},
                             {"<integer>--5</integer>", "error"},
                             {"<integer>1.5</integer>", "error"},
                             {"<integer>1a</integer>", "error"},
                             {"<real>1.5</real>", "r1.5e+00"},
                             {"<real> +1e3 </real>", "r1e+03"},
                             {"<real>-inf</real>", "r-inf"},
                             {"<real>nan</real>", "rnan"},
                             {"<real></real>", "error"},
                             {"<real>1,5</real>", "error"},
                             {"<real>0x10</real>", "error"},
                             {"<real>+-1</real>", "error"},
                             {"<date>2001-01-02T00:00:00Z</date>", "d8.64e+04"},
                             {"<date>2000-02-29T23:59:59Z</date>", "d-2.6438401e+07"},
                             {"<date>0001-01-01T00:00:00Z</date>", "d-6.3113904e+10"},
                             {"<date></date>", "error"},
                             {"<date> 2001-01-02T00:00:00Z</date>", "error"},
                             {"<date>2001-01-02T00:00:00+00:00</date>", "error"},
                             {"<date>2001-01-02 00:00:00Z</date>", "error"},
                             {"<date>2001-01-02T00:00:00.0Z</date>", "error"},
                             {"<date>2001-1-02T00:00:00Z</date>", "error"},
                             {"<date>2001-02-29T00:00:00Z</date>", "error"},
                             {"<date>2001-0:-01T00:00:00Z</date>", "error"},
                             {"<date>2001-01-01T24:00:00Z</date>", "error"},
                             {"<date>-001-01-01T00:00:00Z</date>", "error"},
                             {"<data></data>", "<>"},
                             {"<data>\n\t</data>", "<>"},
                             {"<data>\n\tAA\n\tEC\n\t</data>", "<000102>"},
                             {"<data>AAE=</data>", "<0001>"},
                             {"<data>AA<!-- AAAA -->EC</data>", "<000102>"},
                             {"<data>AA&#xD;\nEC</data>", "<000102>"},
                             {"<data/>", "error"},
                             {"<data><true/></data>", "error"},
                             {"<data>AA</string>", "error"},
                         })));

} // namespace
} // namespace platform
