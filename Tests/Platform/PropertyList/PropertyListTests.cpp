// What holds of values in every form.

#include "Tests/Platform/PropertyList/BinaryFile.h"
#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <thread>

namespace platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using Kind = PropertyListValue::Kind;

PropertyList parsed(const std::string& file) {
    return PropertyList::parse(Data::owning(file)).value();
}

/// The same in the three forms, as far as they have the kinds: {"a": "x", "b": ["y", {}], "a": "z", "c": data}.
const std::string xml = "<dict><key>a</key><string>x</string><key>b</key><array><string>y</string><dict/></array>"
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
}

TEST_P(PropertyListForm, StopsWhenTheVisitorSaysSo) {
    const PropertyList list = parsed(GetParam());
    int visits = 0;
    const auto stop = [&visits](const auto&... /*value*/) { return ++visits % 2 == 0; };
    EXPECT_TRUE(list.root().forEachEntry(stop));
    EXPECT_EQ(visits, 1);
    EXPECT_TRUE(list.root()["b"]->forEachElement([&visits](const PropertyListValue&) { return ++visits > 5; }));
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

TEST_P(PropertyListForm, AnswersNothingForAnotherKind) {
    const PropertyList list = parsed(GetParam());
    const PropertyListValue array = *list.root()["b"];
    const PropertyListValue string = *list.root()["a"];
    std::array<std::optional<PropertyListValue>, 1> found;
    constexpr std::array<std::string_view, 1> keys = {"a"};
    for (const PropertyListValue& value : {array, string}) {
        EXPECT_FALSE(value.select(keys, found));
        EXPECT_FALSE(value["a"]);
        EXPECT_FALSE(value.forEachEntry([](const auto&...) { return true; }));
        EXPECT_FALSE(value.data() || value.date() || value.boolean() || value.integer() || value.number());
    }
    for (const PropertyListValue& value : {list.root(), string}) {
        EXPECT_FALSE(value.forEachElement([](const auto&) { return true; }));
        EXPECT_FALSE(value.arrayCount());
        EXPECT_FALSE(value.isArrayOfDictionaries());
    }
    EXPECT_FALSE(array.string());
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
    const std::map<std::string, std::string> accessorsByXml = {
        {"<string>1</string>", "string"},
        {"<integer>1</integer>", "integer number"},
        {"<integer>0</integer>", "integer number"},
        {"<real>1</real>", "number"},
        {"<true/>", "boolean"},
        {"<false/>", "boolean"},
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
    const std::string filler(300, 'x'); // makes the array long enough for XML to remember where it ends
    const std::map<std::string, bool> answers = {
        {"<array/>", true},
        {"<array></array>", true},
        {"<array><dict/></array>", true},
        {"<array><dict/><string/></array>", false},
        {"<array><array/></array>", false},
        {"<array><dict><key>a</key><string>" + filler + "</string></dict><dict/></array>", true},
        {"<array><dict/><string>" + filler + "</string></array>", false},
        {"<array><array><dict/></array><!--" + filler + "--></array>", false},
        {"<dict/>", false},
        {"()", true},
        {"({},{a=b;})", true},
        {"({},a)", false},
        {"{}", false},
        {BinaryFile{.objects = {"\xA0"s}}.bytes(), true},
        {BinaryFile{.objects = {"\xA2\x01\x01"s, "\xD0"s}}.bytes(), true},
        {BinaryFile{.objects = {"\xA2\x01\x02"s, "\xD0"s, "\x08"s}}.bytes(), false},
        {BinaryFile{.objects = {"\xC1\x01"s, "\xD0"s}}.bytes(), false},
    };
    for (const auto& [file, expected] : answers) {
        EXPECT_EQ(parsed(file).root().isArrayOfDictionaries(), expected) << file;
    }
}

/// Records that are alike to the byte except for their values, and others that are not: keys left out, in another
/// order, written in another way, nested records with the same keys.
TEST(PropertyListValue, RecordsAreReadWhateverIsUnlikeTheOthers) {
    std::string file = "<array>";
    std::string expected;
    const auto add = [&](const std::string& record, const std::string& canonical) {
        file += "\n\t<dict>" + record + "\n\t</dict>";
        expected += (expected.empty() ? "{" : ", {") + canonical + "}";
    };
    const auto name = [](int i) { return "\n\t\t<key>Name</key>\n\t\t<string>n" + std::to_string(i) + "</string>"; };
    const auto type = [](int i) { return "\n\t\t<key>Type</key>\n\t\t<integer>" + std::to_string(i) + "</integer>"; };
    const std::string unread = "\n\t\t<key>unread</key>\n\t\t<true/>";
    const std::string icon = "\n\t\t<key>Icon</key>\n\t\t<data>\n" + std::string(400, 'A') + "\n\t\t</data>";
    const std::string iconText = "\"Icon\": <" + std::string(600, '0') + ">";
    for (int i = 0; i < 300; ++i) {
        const std::string number = std::to_string(i);
        const std::string nameText = "\"Name\": \"n" + number + "\"";
        const std::string typeText = "\"Type\": " + number;
        switch (i * i % 11) {
        case 0:
            add(name(i) + type(i), nameText + ", " + typeText);
            break;
        case 1:
            add(name(i) + icon + unread, iconText + ", " + nameText + ", \"unread\": true");
            break;
        case 3:
            add(type(i) + name(i), nameText + ", " + typeText);
            break;
        case 4:
            add(name(i) + "<key>Type</key><integer>" + number + "</integer>" + icon,
                iconText + ", " + nameText + ", " + typeText);
            break;
        case 5:
            add("\n\t\t<key>inner</key><dict>" + name(i) + type(i) + "</dict>" + type(i),
                typeText + ", \"inner\": {" + nameText + ", " + typeText + "}");
            break;
        default:
            add(name(i) + "\n\t\t<key>k" + number + "</key>\n\t\t<string>&lt;</string>" + icon,
                iconText + ", " + nameText + ", \"k" + number + "\": \"<\"");
            break;
        }
    }
    const PropertyList list = parsed(file + "\n</array>");
    EXPECT_EQ(canonicalText(list.root()), "[" + expected + "]");

    int index = 0;
    list.root().forEachElement([&index](const PropertyListValue& record) {
        std::map<std::string, std::string> entries;
        record.forEachEntry([&entries](const std::string& key, const PropertyListValue& value) {
            entries[key] = canonicalText(value);
            return true;
        });
        constexpr std::array<std::string_view, 5> keys = {"unread", "Icon", "Type", "Name", "inner"};
        std::array<std::optional<PropertyListValue>, 5> found;
        record.select(keys, found);
        for (std::size_t key = 0; key < keys.size(); ++key) {
            const auto entry = entries.find(std::string(keys[key]));
            EXPECT_EQ(found[key] ? canonicalText(*found[key]) : "none", entry == entries.end() ? "none" : entry->second)
                << keys[key] << " of record " << index;
        }
        ++index;
        return true;
    });
    EXPECT_EQ(index, 300);
}

TEST(PropertyListValue, KeysAreToldApart) {
    const std::array<std::string, 10> names = {
        "",           "a",          "aa",       "abcd", "abcdabcd", "abcdefgh1ijklmnop", "abcdefgh2ijklmnop",
        "abcdefghij", "abcdefghxx", "abcdefghx"};
    std::string file = "<dict>";
    BinaryFile binaryFile{.objects = {"\xDA"}};
    for (const std::string& name : names) {
        file += "<key>" + name + "</key><string>" + name + "</string>";
        binaryFile.objects[0] += static_cast<char>(binaryFile.objects.size());
        binaryFile.objects.push_back("\x5F\x10" + std::string(1, static_cast<char>(name.size())) + name);
    }
    binaryFile.objects[0] += binaryFile.objects[0].substr(1);
    for (const std::string& bytes : {file + "</dict>", binaryFile.bytes()}) {
        const PropertyList list = parsed(bytes);
        for (const std::string& name : names) {
            ASSERT_TRUE(list.root()[name]) << name;
            EXPECT_EQ(list.root()[name]->string(), name);
        }
        for (const std::string_view missing : {"b", "aaa", "abcda", "abcdabc", "abcdefgh3ijklmnop", "abcdefghi"}) {
            EXPECT_FALSE(list.root()[missing]) << missing;
        }
    }
}

TEST(PropertyListValue, KeysAndDataMayHaveMarkupInEveryRecord) {
    const std::string digits(400, 'A');
    std::string file = "<array>";
    for (int i = 0; i < 5; ++i) {
        file += "<dict><key>R&amp;D</key><integer>" + std::to_string(i) + "</integer><key>Icon</key><data>" + digits +
                "<!--AAAA-->&#xD;" + digits + "</data></dict>";
    }
    const PropertyList list = parsed(file + "</array>");
    std::int64_t index = 0;
    list.root().forEachElement([&](const PropertyListValue& record) {
        EXPECT_EQ(record["R&D"].value().integer(), index++);
        EXPECT_EQ(record["Icon"].value().data()->decoded().bytes(), std::string(600, '\0'));
        return true;
    });
    EXPECT_EQ(index, 5);
}

/// A change of one byte makes a known entry an error or another entry, never the known one.
TEST(PropertyListValue, KnownEntriesAreComparedToTheByte) {
    const std::string record =
        "<dict>\n\t<key>Name</key>\n\t<string>n</string>\n\t<key>Type</key>\n\t<integer>1</integer>\n</dict>";
    const std::string before = "<array>" + record;
    const std::string after = record + "</array>";
    const std::string sound = canonicalText(before + record + after);
    const std::string known = "Name</key>\n\t<string>n</string>\n\t<key>Type</key>\n\t<integer>1</integer>";
    const std::size_t start = record.find(known);
    for (std::size_t offset = 0; offset < known.size(); ++offset) {
        std::string changed = record;
        changed[start + offset] = 'q';
        EXPECT_NE(canonicalText(before + changed + after), sound) << changed;
    }
}

TEST(PropertyListValue, MayBeReadByManyThreads) {
    std::string file = "<array>";
    for (int i = 0; i < 500; ++i) {
        file += "<dict><key>Name</key><string>n" + std::to_string(i) + "</string></dict>";
    }
    const PropertyList list = parsed(file + "</array>");
    const std::string expected = canonicalText(list.root());
    std::array<std::string, 4> texts;
    {
        std::vector<std::jthread> threads;
        for (std::string& result : texts) {
            threads.emplace_back([&list, &result] { result = canonicalText(list.root()); });
        }
    }
    EXPECT_THAT(texts, testing::Each(expected));
}

} // namespace
} // namespace platform
