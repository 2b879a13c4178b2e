// What holds of property lists in every form.

#include "Tests/Platform/PropertyList/CanonicalText.h"
#include "Tests/Support/Repeated.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

namespace platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using Kind = PropertyListValue::Kind;

PropertyList parsed(const std::string& file) {
    return PropertyList::parse(Data::owning(file)).value();
}

/// The same in the three forms: {"a": "x", "b": ["y", {}], "a": "z", "c": data}.
class PropertyListForm : public testing::TestWithParam<std::string> {
  protected:
    const PropertyList list = parsed(GetParam());
    const PropertyListValue array = *list.root()["b"];
};

INSTANTIATE_TEST_SUITE_P(
    Forms, PropertyListForm,
    testing::Values("<dict><key>a</key><string>x</string><key>b</key><array><string>y</string><dict/></array>"
                    "<key>&#97;</key><string>z</string><key>c</key><data>AAEC</data></dict>",
                    "{a=x;b=(y,{});\"a\"=z;c=<000102>;}",
                    BinaryFile{.objects = {"\xD4\x01\x03\x01\x07\x02\x04\x06\x08"s, "\x51"s + "a", "\x51"s + "x",
                                           "\x51"s + "b", "\xA2\x05\x09"s, "\x51"s + "y", "\x51"s + "z", "\x51"s + "c",
                                           "\x43\x00\x01\x02"s, "\xD0"s}}
                        .bytes()));

TEST_P(PropertyListForm, IsWalkedInTheFilesOrder) {
    std::vector<std::string> entries;
    EXPECT_TRUE(list.root().forEachEntry([&](const std::string& key, const PropertyListValue& value) {
        entries.push_back(key + canonicalText(value));
        return true;
    }));
    EXPECT_THAT(entries, ElementsAre("a\"x\"", "b[\"y\", {}]", "a\"z\"", "c<000102>"));
    EXPECT_EQ(array.arrayCount(), 2U);
    int visits = 0;
    const auto stop = [&visits](const auto&...) { return ++visits > 5; };
    EXPECT_TRUE(list.root().forEachEntry(stop) && array.forEachElement(stop));
    EXPECT_EQ(visits, 2);
}

TEST_P(PropertyListForm, SelectsTheLastValueOfEveryKey) {
    constexpr std::array<std::string_view, 5> keys = {"c", "", "a", "missing", "b"};
    std::array<std::optional<PropertyListValue>, 5> found;
    found.fill(list.root());
    ASSERT_TRUE(list.root().select(keys, found));
    EXPECT_EQ(canonicalText(found[0].value()), "<000102>");
    EXPECT_FALSE(found[1] || found[3]);
    EXPECT_EQ(found[2]->string(), "z");
    EXPECT_EQ(found[4]->kind(), Kind::array);
    EXPECT_FALSE(list.root()["A"]);
    // Data keep their bytes alive.
    const std::optional<EncodedData> data = parsed(GetParam()).root()["c"]->data();
    EXPECT_EQ(data->decoded().bytes(), "\x00\x01\x02"s);
    EXPECT_FALSE(array["a"] || array.select(keys, found) || array.forEachEntry([](const auto&...) { return true; }));
    EXPECT_FALSE(list.root().arrayCount() || list.root().forEachElement([](const auto&) { return true; }));
}

TEST(PropertyListValue, IsOfOneKind) {
    const std::pair<std::string, std::string> rows[]{
        {"<string>1</string>", "string "},
        {"<integer>1</integer>", "integer number "},
        {"<real>1</real>", "number "},
        {"<true/>", "boolean "},
        {"<date>2001-01-01T00:00:00Z</date>", "date "},
        {"<data>AA==</data>", "data "},
        {"<array/>", "array dictionaries "},
        {"<array><dict/></array>", "array dictionaries "},
        {"<array><dict/><string/></array>", "array "},
        {"<array><array/></array>", "array "},
        {"<dict/>", ""},
        {"<integer>18446744073709551615</integer>", "number "},
        {BinaryFile{.objects = {"\x00"s}}.bytes(), ""},
        {BinaryFile{.objects = {"\x80\x01"s}}.bytes(), ""},
        {BinaryFile{.objects = {"\xC1\x01"s, "\xD0"s}}.bytes(), ""},
    };
    for (const auto& [file, expected] : rows) {
        const PropertyList list = parsed(file);
        const PropertyListValue value = list.root();
        std::string accessors;
        accessors += value.string() ? "string " : "";
        accessors += value.integer() ? "integer " : "";
        accessors += value.boolean() ? "boolean " : "";
        accessors += value.date() ? "date " : "";
        accessors += value.data() ? "data " : "";
        accessors += value.number() ? "number " : "";
        accessors += value.arrayCount() ? "array " : "";
        accessors += value.isArrayOfDictionaries() ? "dictionaries " : "";
        EXPECT_EQ(accessors, expected) << file;
    }
}

/// Python's plistlib sees the same in generated property lists.
TEST(PropertyListReference, PlistlibSeesTheSame) {
    const TemporaryFolder folder;
    const std::string reference = "/usr/bin/python3 '" PROJECT_FOLDER "/Tests/Platform/PropertyList/reference.py' ";
    ASSERT_EQ(std::system((reference + "'" + folder.path("") + "' 120").c_str()), 0);
    int count = 0;
    for (const std::string& name : folder.names()) {
        if (!name.ends_with(".reference")) {
            EXPECT_EQ(canonicalText(folder.content(name)), folder.content(name + ".reference")) << name;
            ++count;
        }
    }
    EXPECT_EQ(count, 240);
}

/// The sanitizers find reads outside of the bytes.
TEST(PropertyListDamage, MakesAnErrorOrAValue) {
    const std::string files[]{
        "<?xml version='1.0'?><!DOCTYPE plist [<!ENTITY a \"b\">]><!--c--><plist a='b'><dict><key>a&amp;b</key>"
        "<array><string>ä<![CDATA[x]]></string><integer>-1</integer><date>2001-01-02T00:00:00Z</date><dict/>"
        "<data>\nAAEC\n</data><real>1.5</real></array><key>c</key><true/></dict></plist>",
        "{a=(b,\"c\\U00e4\\101\",<0f0f>,{});/**/'d'=e;//\n}",
        BinaryFile{.objects = {"\xD2\x01\x02\x03\x04"s, "\x51"s + "a", "\x62\xD8\x3D\xDE\x00"s, "\xA4\x05\x06\x07\x08"s,
                               "\x4F\x10\x10"s + "0123456789abcdef", "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
                               "\x33\x40\xF5\x18\x00\x00\x00\x00\x00"s, "\x22\x3F\xC0\x00\x00"s, "\xD0"s}}
            .bytes(),
    };
    for (const std::string& file : files) {
        ASSERT_NE(canonicalText(file), "error");
        for (std::size_t offset = 0; offset < file.size(); ++offset) {
            // The first characters of the binary form are a text of the old form.
            EXPECT_TRUE(canonicalText(file.substr(0, offset)) == "error" || (file[0] == 'b' && offset <= 8)) << offset;
            for (int change = 1; change < 256; ++change) {
                std::string changed = file;
                changed[offset] = static_cast<char>(changed[offset] ^ change);
                canonicalText(changed);
            }
        }
    }
}

/// Arrays within each other, the last one empty.
BinaryFile nestedBinary(std::size_t depth) {
    BinaryFile file{.offsetSize = 4, .referenceSize = 4};
    for (std::size_t index = 1; index < depth; ++index) {
        file.objects.push_back("\xA1" + bigEndian(index, 4));
    }
    file.objects.emplace_back("\xA0");
    return file;
}

TEST(PropertyListLimits, DepthIsBounded) {
    constexpr std::size_t max = PropertyList::maxDepth;
    const auto isRead = [](const std::string& file) { return canonicalText(file) != "error"; };
    for (const std::size_t depth : {max, max + 1, std::size_t{100'000}}) {
        const bool isAllowed = depth <= max;
        const auto nested = [depth](std::string_view open, const std::string& content, std::string_view close) {
            return repeated(open, depth) + content + repeated(close, depth);
        };
        EXPECT_EQ(isRead(nested("<array>", "", "</array>")), isAllowed) << depth;
        EXPECT_EQ(isRead(nested("<dict><key>a</key>", "<true/>", "</dict>")), isAllowed) << depth;
        EXPECT_EQ(isRead(nested("(", "", ")")), isAllowed) << depth;
        EXPECT_EQ(isRead(nested("{a=", "b", ";}")), isAllowed) << depth;
        EXPECT_EQ(isRead(nestedBinary(depth).bytes()), isAllowed) << depth;
    }
    // A container's depth counts on every way to it: the root refers to a chain's second half first, then to its
    // beginning.
    for (const std::size_t length : {max / 2 - 1, max / 2}) {
        BinaryFile file = nestedBinary(2 * length + 1);
        file.objects.emplace_back("\xA2" + bigEndian(length, 4) + bigEndian(0, 4));
        file.root = file.objects.size() - 1;
        EXPECT_EQ(isRead(file.bytes()), 2 * length + 2 <= max) << length;
    }
}

TEST(PropertyListLimits, SharedContainersAreCheckedOnce) {
    // Every array has the next one twice: 2^60 leaves in a few hundred bytes.
    BinaryFile file;
    for (char index = 1; index <= 60; ++index) {
        file.objects.push_back("\xA2"s + index + index);
    }
    file.objects.emplace_back("\x09");
    EXPECT_EQ(parsed(file.bytes()).root().arrayCount(), 2U);
}

/// A root refers to 300,000 objects, all of which have the offset of the same large array or text.
TEST(PropertyListLimits, ObjectsInTheSameBytesAreRefused) {
    constexpr std::size_t count = 300'000;
    std::string references;
    for (std::size_t index = 0; index < count; ++index) {
        references += bigEndian(index + 2, 3);
    }
    const std::string root = "\xAF\x12" + bigEndian(count, 4) + references;
    for (const std::string& large : {"\xAF\x12" + bigEndian(count, 4) + repeated(bigEndian(1, 3), count),
                                     "\x5F\x12" + bigEndian(3 * count, 4) + std::string(3 * count, 'a')}) {
        BinaryFile file{.objects = {root, "\x09", large}, .offsetSize = 3, .referenceSize = 3};
        file.objects.resize(count + 2);
        for (std::size_t index = 3; index < count + 2; ++index) {
            file.offsets.emplace_back(index, 8 + root.size() + 1);
        }
        EXPECT_EQ(canonicalText(file.bytes()), "error");
    }
}

std::string declared(std::string_view encoding, std::string_view content) {
    return "<?xml version='1.0' encoding='"s.append(encoding).append("'?><string>").append(content) + "</string>";
}

TEST(PropertyListEncoding, IsTakenFromMarkAndDeclaration) {
    /// Returns ASCII in units of `size` bytes.
    const auto widened = [](std::string_view text, std::size_t size, bool isBigEndian) {
        std::string wide;
        for (const char character : text) {
            const std::string rest(size - 1, '\0');
            wide += isBigEndian ? rest + character : character + rest;
        }
        return wide;
    };
    const std::string xml = "<string>a</string>";
    const std::string utf16 = declared("UTF-16", "a");
    expectRead({
        {"\xEF\xBB\xBF{a=b;}", R"({"a": "b"})"},
        {"\xFF\xFE" + widened(xml, 2, false), R"("a")"},
        {"\xFE\xFF" + widened(xml, 2, true), R"("a")"},
        {"\xFF\xFE\0\0"s + widened(xml, 4, false), R"("a")"},
        {"\0\0\xFE\xFF"s + widened(xml, 4, true), R"("a")"},
        {"\xFF\xFE" + widened("(a, b)", 2, false), R"(["a", "b"])"},
        {widened(utf16, 2, false), R"("a")"},
        {widened(utf16, 2, true), R"("a")"},
        // The mark counts.
        {"\xEF\xBB\xBF" + declared("ISO-8859-1", "ä"), R"("ä")"},
        {declared("ISO-8859-1", "\xE4"), R"("ä")"},
        {"<?xml version = \"1.0\" encoding\t=\n\"ISO-8859-1\" ?><string>\xE4</string>", R"("ä")"},
        {"<?xml version='1.0'?><string>ä</string>", R"("ä")"},
    });
    expectRefused(declared("no-such-encoding", "a"), declared("US-ASCII//IGNORE", "\xE4"), declared("UTF-16", "a"),
                  declared("US-ASCII", "ä"), "\xFF\xFE" + widened(xml, 2, false) + "\n",
                  "\xFE\xFF" + widened("<string>", 2, true) + "\xD8\x00"s + widened("</string>", 2, true),
                  "\0\0\xFE\xFF"s + widened("<string>", 4, true) + "\0\x11\0\0"s + widened("</string>", 4, true));
    // Invalid bytes are an error everywhere.
    for (const std::string bad : {"\xE4", "\xED\xA0\x80"}) {
        expectRefused(bad + "<true/>", "<!--" + bad + "--><true/>", "<?p " + bad + "?><true/>",
                      "<!DOCTYPE " + bad + "><true/>", "<plist a='" + bad + "'><true/></plist>",
                      "<string>&amp;" + bad + "</string>", "<string><![CDATA[" + bad + "]]></string>",
                      "<data>AAAA" + bad + "</data>", "<dict><key>" + bad + "</key><true/></dict>",
                      "<true/><!--" + bad + "-->", "\"" + bad + "\"", "{a=b;} /* " + bad + " */");
    }
}

} // namespace
} // namespace platform
