#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using namespace std::string_view_literals;

struct Case {
    std::string_view text;
    /// The canonical text, or "error".
    std::string_view expected;
};

TEST(TextPropertyList, IsReadAsExpected) {
    constexpr auto cases = std::to_array<Case>({
        {"hello", R"("hello")"},
        {"  hello\n", R"("hello")"},
        {"a_$/:.-1", R"("a_$/:.-1")"},
        {"a//b", R"("a//b")"},
        {"/a", R"("/a")"},
        {"\"hello world\"", R"("hello world")"},
        {"'it is \"so\"'", R"("it is \22so\22")"},
        {"\"\"", R"("")"},
        {"\"two\nlines\"", R"("two\0alines")"},
        {"\"ä 日本\"", R"("ä 日本")"},
        {R"("\\ \" \' \n \t \r \a \b \f \v \q")", R"("\5c \22 ' \0a \09 \0d \07 \08 \0c \0b q")"},
        {R"("\101\60\0601 \344 \8")", R"("A001 ä 8")"},
        {R"("\U00e4\U20AC\u")", R"("ä€u")"},
        {R"("\Ud83d\Ude00 \Ud83dx \Ud83d\U0041 \Ude00 \U")", "\"😀 \xEF\xBF\xBDx \xEF\xBF\xBD"
                                                             "A \xEF\xBF\xBD \\00\""},
        {"<>", "<>"},
        {"<0fA0 1\n2>", "<0fa012>"},
        {"()", "[]"},
        {"(a)", R"(["a"])"},
        {"(a, \"b\" , (c),{d=e;},<00>,)", R"(["a", "b", ["c"], {"d": "e"}, <00>])"},
        {"{}", "{}"},
        {"{ a = 1; 'b c' = (x); }", R"({"a": "1", "b c": ["x"]})"},
        {"{a=1;a=2;}", R"({"a": "2"})"},
        {"{\"\\U00e4\"=1;}", R"({"ä": "1"})"},
        {"// comment\n/* { */ { /**/ a // =\r = /* ; */ b /***/ ; } // end", R"({"a": "b"})"},
        {"/* a */ b", R"("b")"},
        {"", "error"},
        {" \n", "error"},
        {"// only a comment", "error"},
        {"/* a", "error"},
        {"a /* b", "error"},
        {"hello world", "error"},
        {"a;", "error"},
        {"a = b;", "error"},
        {"\"a", "error"},
        {"\"a\\\"", "error"},
        {"\"a' ", "error"},
        {"ä", "error"},
        {"<0>", "error"},
        {"<0g>", "error"},
        {"<00", "error"},
        {"(", "error"},
        {"(a", "error"},
        {"(a,", "error"},
        {"(,)", "error"},
        {"(a,,b)", "error"},
        {"(a b)", "error"},
        {"(a}", "error"},
        {")", "error"},
        {"{", "error"},
        {"{a}", "error"},
        {"{a=}", "error"},
        {"{a=b}", "error"},
        {"{a=b;", "error"},
        {"{a=b;;}", "error"},
        {"{(a)=b;}", "error"},
        {"{a=b;)", "error"},
        {"{}{}", "error"},
        {"\"\xE4\"", "error"},
        {"{a=b;} /* \xE4 */", "error"},
    });
    for (const Case& tested : cases) {
        EXPECT_EQ(canonicalText(tested.text), tested.expected) << tested.text;
    }
}

TEST(TextPropertyList, IsTriedAfterTheOtherForms) {
    EXPECT_EQ(canonicalText("bplist00"), R"("bplist00")");
    EXPECT_EQ(canonicalText("<da>"), "<da>");
    EXPECT_EQ(canonicalText("<date>"), "error");
    EXPECT_EQ(canonicalText(Data()), "error");
}

} // namespace
} // namespace platform
