#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(TextPropertyList, IsReadAsExpected) {
    expectRead({
        {"  a_$/:.-1\n", R"("a_$/:.-1")"},
        {"a//b", R"("a//b")"},
        {"'it is \"so\"'", R"("it is \22so\22")"},
        {"\"\"", R"("")"},
        {"\"two\nlines, ä 日本\"", R"("two\0alines, ä 日本")"},
        {R"("\\ \" \' \n \t \r \a \b \f \v \q")", R"("\5c \22 ' \0a \09 \0d \07 \08 \0c \0b q")"},
        {R"("\101\60\0601 \344 \8")", R"("A001 ä 8")"},
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
