// What holds of values in every form.

#include "Tests/Platform/PropertyList/BinaryFile.h"
#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using Kind = PropertyListValue::Kind;

PropertyList parsed(const std::string& file) {
    return PropertyList::parse(Data::owning(file)).value();
}

/// The same in the three forms, as far as they have the kinds: {"a": "x", "b": ["y", {}], "a": "z", "c": data}.
const std::string xml = "<dict><key>&#97;</key><string>x</string><key>b</key><array><string>y</string><dict/></array>"
                        "<key>a</key><string>z</string><key>c</key><data>AAEC</data></dict>";
const std::string text = "{a=x;b=(y,{});a=z;c=<000102>;}";
const std::string binary = BinaryFile{
    .objects = {"\xD4\x01\x03\x01\x07\x02\x04\x06\x08"s, "\x51"s + "a", "\x51"s + "x", "\x51"s + "b", "\xA2\x05\x09"s,
                "\x51"s + "y", "\x51"s + "z", "\x51"s + "c", "\x43\x00\x01\x02"s,
                "\xD0"s}}.bytes();

class PropertyListForm : public testing::TestWithParam<std::string> {};

TEST_P(PropertyListForm, IsWalkedInTheFilesOrder) {
    const PropertyList list = parsed(GetParam());
    std::vector<std::string> entries;
    EXPECT_TRUE(list.root().forEachEntry([&](const std::string& key, const PropertyListValue& value) {
        entries.push_back(key + canonicalText(value));
        return true;
    }));
    EXPECT_THAT(entries, ElementsAre("a\"x\"", "b[\"y\", {}]", "a\"z\"", "c<000102>"));

    std::vector<Kind> elements;
    EXPECT_TRUE(list.root()["b"]->forEachElement([&](const PropertyListValue& value) {
        elements.push_back(value.kind());
        return true;
    }));
    EXPECT_THAT(elements, ElementsAre(Kind::string, Kind::dictionary));
    EXPECT_EQ(list.root()["b"]->arrayCount(), 2U);

    int visits = 0;
    const auto stop = [&visits](const auto&...) { return ++visits > 5; };
    EXPECT_TRUE(list.root().forEachEntry(stop) && list.root()["b"]->forEachElement(stop));
    EXPECT_EQ(visits, 2);
}

TEST_P(PropertyListForm, SelectsTheLastValueOfEveryKey) {
    const PropertyList list = parsed(GetParam());
    constexpr std::array<std::string_view, 5> keys = {"c", "", "a", "missing", "b"};
    // What was there before is no answer.
    std::array<std::optional<PropertyListValue>, 5> found;
    found.fill(list.root());
    ASSERT_TRUE(list.root().select(keys, found));
    EXPECT_EQ(canonicalText(found[0].value()), "<000102>");
    EXPECT_FALSE(found[1]);
    EXPECT_EQ(found[2]->string(), "z");
    EXPECT_FALSE(found[3]);
    EXPECT_EQ(found[4]->kind(), Kind::array);
    EXPECT_EQ(list.root()["a"]->string(), "z");
    EXPECT_FALSE(list.root()["A"]);
}

TEST_P(PropertyListForm, HasNoChildrenOfAnotherKind) {
    const PropertyList list = parsed(GetParam());
    const PropertyListValue array = *list.root()["b"];
    const PropertyListValue string = *list.root()["a"];
    std::array<std::optional<PropertyListValue>, 1> found;
    constexpr std::array<std::string_view, 1> keys = {"a"};
    for (const PropertyListValue& value : {array, string}) {
        EXPECT_FALSE(value.select(keys, found));
        EXPECT_FALSE(value["a"]);
        EXPECT_FALSE(value.forEachEntry([](const auto&...) { return true; }));
    }
    for (const PropertyListValue& value : {list.root(), string}) {
        EXPECT_FALSE(value.forEachElement([](const auto&) { return true; }));
        EXPECT_FALSE(value.arrayCount());
        EXPECT_FALSE(value.isArrayOfDictionaries());
    }
}

TEST_P(PropertyListForm, KeepsTheBytesOfDataAlive) {
    std::optional<EncodedData> data;
    {
        std::optional<PropertyList> list = parsed(GetParam());
        const PropertyList moved = *std::move(list);
        data = moved.root()["c"]->data();
    }
    EXPECT_EQ(data->decoded().bytes(), "\x00\x01\x02"s);
}

INSTANTIATE_TEST_SUITE_P(Forms, PropertyListForm, testing::Values(xml, text, binary));

/// Kinds are strict: each of these values has the accessors that are named, and no other.
TEST(PropertyListValue, IsOfOneKind) {
    const std::pair<std::string, std::string> accessorsByXml[]{
        {"<string>1</string>", "string"},
        {"<integer>1</integer>", "integer number"},
        {"<real>1</real>", "number"},
        {"<true/>", "boolean"},
        {"<date>2001-01-01T00:00:00Z</date>", "date"},
        {"<data>AA==</data>", "data"},
        {"<array/>", "array"},
        {"<dict/>", ""},
        {"<integer>18446744073709551615</integer>", "number"},
    };
    const auto accessors = [](const PropertyListValue& value) {
        std::string names;
        const auto add = [&names](const auto& answer, std::string_view name) {
            if (answer) {
                names.append(names.empty() ? "" : " ").append(name);
            }
        };
        add(value.string(), "string");
        add(value.integer(), "integer");
        add(value.boolean(), "boolean");
        add(value.date(), "date");
        add(value.data(), "data");
        add(value.number(), "number");
        add(value.arrayCount(), "array");
        return names;
    };
    for (const auto& [file, expected] : accessorsByXml) {
        EXPECT_EQ(accessors(parsed(file).root()), expected) << file;
    }
    for (const auto& object : {"\x00"s, "\x80\x01"s, "\xC0"s}) {
        EXPECT_EQ(accessors(parsed(BinaryFile{.objects = {object}}.bytes()).root()), "") << hexadecimal(object);
    }
}

TEST(PropertyListValue, IsAnArrayOfDictionariesOrNot) {
    for (const std::string& file : {"<array/>"s, "<array><dict/></array>"s, "()"s, "({},{a=b;})"s,
                                    BinaryFile{.objects = {"\xA2\x01\x01"s, "\xD0"s}}.bytes()}) {
        EXPECT_TRUE(parsed(file).root().isArrayOfDictionaries()) << file;
    }
    for (const std::string& file : {"<array><dict/><string/></array>"s, "<array><array/></array>"s, "<dict/>"s,
                                    BinaryFile{.objects = {"\xC1\x01"s, "\xD0"s}}.bytes()}) {
        EXPECT_FALSE(parsed(file).root().isArrayOfDictionaries()) << file;
    }
}

} // namespace
} // namespace platform
