#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(XmlPropertyList, ReadsDocuments) {
    expectRead({
        {"  \n<plist version=\"1.0\" note='a > b'><true/></plist>\r\n\t", "true"},
        {"<!-- <a> --><?p >?><plist><!-- - --><true/><?q?></plist><!---->", "true"},
        {"<!DOCTYPE plist PUBLIC \"-//EXAMPLE//DTD\" \"a>b.dtd\"><plist><true/></plist>", "true"},
        {"<!DOCTYPE plist [<!ENTITY e \"]>\"><!-- ' ] > --><?p ]>?>]><true/>", "true"},
        {"<plist><array><true/><false></false><true /><false\n/></array></plist>", "[true, false, true, false]"},
    });
    expectRefused(" \n", "<", "<plist/>", "<plist><true/><false/></plist>", "<plist><plist><true/></plist></plist>",
                  "<plist><true/>", "<plist><true/></plist", "<plist><true/></array>", "<plist><true/></plist><true/>",
                  "<true/>text", "text<true/>", "<!-- <true/>", "<?xml <true/>", "<!DOCTYPE plist [<true/>",
                  "<!DOCTYPE p [<!ENTITY e \"x\">]><string>&e;</string>", "<key>a</key>", "<unknown/>",
                  "<String>a</String>", "<array><dictionary/></array>", "< true/>", "<true/ >", "<true//>", "</true>",
                  "<true> </true>", "<string>a</strin>", "<string>a</string x>", "<string <true/>>a</string>");
}

TEST(XmlPropertyList, ReadsContainers) {
    expectRead({
        {"<dict> </dict>", "{}"},
        {"<dict><key>b</key><array/><key>a</key><dict><key>a</key><true/></dict></dict>",
         R"({"a": {"a": true}, "b": []})"},
        {"<dict><key/><true/></dict>", R"({"": true})"},
        {"<dict><key>a&amp;<![CDATA[<b>]]></key><true/></dict>", R"({"a&<b>": true})"},
        {"<dict ><key >a</key ><string >b</string ></dict >", R"({"a": "b"})"},
        {"<dict><!-- a --><key>a</key><!-- b --><true/><!-- c --></dict>", R"({"a": true})"},
        {"<dict><key>a</key><true/><key>a</key><false/></dict>", R"({"a": false})"},
    });
    expectRefused("<array></dict>", "<array>&amp;</array>", "<array><key>a</key></array>", "<dict><true/></dict>",
                  "<dict><key>a</key></dict>", "<dict><key>a</key><key>b</key><true/></dict>",
                  "<dict><key>a</key><true/><true/></dict>", "<dict><string>a</string><true/></dict>",
                  "<dict><key>a</key>b<true/></dict>", "<dict><key>a<true/></key><true/></dict>");
}

TEST(XmlPropertyList, ReadsStrings) {
    expectRead({
        {"<string/>", R"("")"},
        {"<string>a > b ' \" ]]></string>", R"("a > b ' \22 ]]>")"},
        {"<string>&lt;&gt;&amp;&quot;&apos;&amp;lt;</string>", R"("<>&\22'&lt;")"},
        {"<string>&#65;&#x42;&#00068;&#xe4;&#x20AC;&#x1F600;&#x10FFFF;</string>", "\"ABDä€😀\xF4\x8F\xBF\xBF\""},
        {"<string><![CDATA[<a>&amp;]] ]>]]></string>", R"("<a>&amp;]] ]>")"},
        {"<string>a<![CDATA[]]>b<![CDATA[</string>]]><!-- </string> -->ä<?p </string>?></string>", R"("ab</string>ä")"},
    });
    expectRefused("<string>a</string", "<string>a<true/></string>", "<string>a < b</string>", "<string>a & b</string>",
                  "<string>&nbsp;</string>", "<string>&amp</string>", "<string>&#x;</string>",
                  "<string>&#65a;</string>", "<string>&#0;</string>", "<string>&#xD800;</string>",
                  "<string>&#x110000;</string>", "<string><![CDATA[a</string>", "<string><!-- a</string>");
}

std::string element(std::string_view name, std::string_view content) {
    return ("<" + std::string(name) + ">").append(content).append("</").append(name) + ">";
}

TEST(XmlPropertyList, ReadsScalars) {
    const std::tuple<std::string_view, std::string_view, std::string_view> rows[]{
        {"integer", "+5", "5"},
        {"integer", " 0x1F\n", "31"},
        {"integer", "-0Xa", "-10"},
        {"integer", "4<!-- and -->&#50;", "42"},
        {"real", " +1e3 ", "r1e+03"},
        {"real", "-inf", "r-inf"},
        {"real", "nan", "rnan"},
        {"data", "", "<>"},
        {"data", "\n\tAA\n\tEC\n\t", "<000102>"},
        {"data", "AA<!-- AAAA -->&#xD;\nE=", "<0001>"},
    };
    for (const auto& [name, content, expected] : rows) {
        EXPECT_EQ(canonicalText(element(name, content)), expected) << content;
    }
    const auto expectRefusedIn = [](std::string_view name, const auto&... contents) {
        expectRefused(element(name, contents)...);
    };
    expectRefusedIn("integer", "18446744073709551616", "-9223372036854775809", "0x10000000000000000", "", "-", "0x",
                    "--5", "1.5", "1a");
    expectRefusedIn("real", "", "1,5", "0x10", "+-1");
    expectRefusedIn("date", "", " 2001-01-02T00:00:00Z", "2001-01-02T00:00:00+00:00", "2001-01-02 00:00:00Z",
                    "2001-01-02T00:00:00.0Z");
    expectRefusedIn("data", "<true/>", "AA</string>");
    expectRefused("<data/>", "<date/>", "<integer/>", "<real/>");
}

TEST(TextPropertyList, IsReadAsExpected) {
    expectRead({
        {"  a_$/:.-1\n", R"("a_$/:.-1")"},
        {"'it is \"so\"'", R"("it is \22so\22")"},
        {"\"two\nlines, ä 日本\"", R"("two\0alines, ä 日本")"},
        {R"("\\ \" \' \n \t \r \a \b \f \v \q")", R"("\5c \22 ' \0a \09 \0d \07 \08 \0c \0b q")"},
        {R"("\101\60\0601\72 \344 \8")", R"("A001: ä 8")"},
        {R"("\U00e4\U20AC\u")", R"("ä€u")"},
        {R"("\Ud83d\Ude00 \Ud83dx \Ud83d\U0041 \Ude00 \U")", "\"😀 \xEF\xBF\xBDx \xEF\xBF\xBD\x41 \xEF\xBF\xBD \\00\""},
        {"<>", "<>"},
        {"<0fA0 1\n2>", "<0fa012>"},
        {"(a, \"b\" , (c),{d=e;},<00>,)", R"(["a", "b", ["c"], {"d": "e"}, <00>])"},
        {"{ a = 1; 'b c' = (x); }", R"({"a": "1", "b c": ["x"]})"},
        {"{\"\\U00e4\"=1;\"\\U00e4\"=2;}", R"({"ä": "2"})"},
        {"// comment\n/* { */ { /**/ a // =\r = /* ; */ b /***/ ; } // end", R"({"a": "b"})"},
        // The other forms are tried first.
        {"bplist00", R"("bplist00")"},
        {"<da>", "<da>"},
    });
    expectRefused("", " \n", "// only a comment", "/* a", "a /* b", "hello world", "a;", "\"a", "\"a\\\"", "\"a' ", "ä",
                  "<0>", "<0g>", "<00", "(", "(a", "(a,", "(,)", "(a,,b)", "(a b)", "(a}", ")", "{", "{a}", "{a=}",
                  "{a=b}", "{a=b;", "{a=b;;}", "{(a)=b;}", "{a=b;)", "{}{}");
}

} // namespace
} // namespace platform
