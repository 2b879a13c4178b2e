#include "Tests/Extension/Lists/StoreFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::ElementsAre;
using FavoritesFile = testing::StoreFile<FavoritesStore>;
using ::testing::IsEmpty;

/// One line that says all of an item that a test may want to know.
std::string outline(const FavoritesItem& item) {
    const auto orNone = [](const std::optional<std::string>& text) { return text.value_or("-"); };
    return item.id + " | " + item.name + " | " + std::string(item.icon) + " | " + std::to_string(item.label) + " | " +
           orNone(item.location) + " | " + orNone(item.groupName) + " | " +
           (item.url ? item.url->absoluteString() : "-") + " | " +
           (item.isDatabase == IsDatabase::yes ? "database " : "") + orNone(item.databasePath);
}

std::vector<std::string> outlines(const std::vector<FavoritesItem>& items) {
    std::vector<std::string> lines;
    for (const FavoritesItem& item : items) {
        lines.push_back(outline(item));
    }
    return lines;
}

TEST(FavoritesStore, ReadsEveryKindOfEntry) {
    const FavoritesFile file = FavoritesFile::ofArray(R"(
        <dict><key>Name</key><string>Work</string><key>Children</key><array>
            <dict><key>Name</key><string>Base</string><key>Path</key><string>/home/ada/A &amp; B</string></dict>
            <dict><key>Name</key><string>Note</string><key>UUID</key><string>U-1</string><key>Type</key><integer>124</integer>
                  <key>Label</key><integer>3</integer><key>Location</key><string>In › Box</string></dict>
            <dict><key>SIUUID</key><string>S-1</string><key>Location</key><string>ignored</string></dict>
        </array></dict>
        <dict><key>UUID</key><string>U-1</string><key>Name</key><string>Note</string></dict>)");
    EXPECT_THAT(
        outlines(file.store.readFromPlist()),
        ElementsAre("db:Work//home/ada/A & B | Base | cylinder.split.1x2 | 0 | - | Work | "
                    "x-foliovault://open-path?path=/home/ada/A%20%26%20B&widget=favorites | database /home/ada/A & B",
                    "item:Work/U-1 | Note | doc.plaintext | 3 | In › Box | Work | "
                    "x-foliovault-item://U-1?widget=favorites | -",
                    "si:Work/S-1 | Untitled | gearshape.2 | 0 | - | Work | "
                    "x-foliovault-smartgroup://S-1?widget=favorites | -",
                    "item:U-1 | Note | doc | 0 | - | - | x-foliovault-item://U-1?widget=favorites | -"));
    EXPECT_THAT(file.log.lines(), IsEmpty());
}

TEST(FavoritesStore, TakesEachEntryAsWellAsItCan) {
    struct Row {
        const char* entry;
        const char* expected;
    };
    const Row rows[]{
        {"<dict/>", ""},
        {"<dict><key>Name</key><string>n</string></dict>", ""},
        {"<dict><key>Path</key><integer>1</integer></dict>", ""},
        {"<dict><key>path</key><string>/a</string></dict>", ""},
        {"<dict><key>UUID</key><string>u</string><key>Path</key><string>/p</string></dict>", "db:/p"},
        {"<dict><key>UUID</key><string>u</string><key>Path</key><true/></dict>", "item:u"},
        {"<dict><key>SIUUID</key><string>s</string><key>UUID</key><string>u</string></dict>", "item:u"},
        {"<dict><key>UUID</key><string></string></dict>", "item:"},
        {"<dict><key>Children</key><string>x</string><key>UUID</key><string>u</string></dict>", "item:u"},
        {"<dict><key>Children</key><array><string>x</string></array><key>UUID</key><string>u</string></dict>",
         "item:u"},
        {"<dict><key>Children</key><array/><key>UUID</key><string>u</string></dict>", ""},
        {"<dict><key>Children</key><array><dict><key>Children</key><array/><key>UUID</key><string>u</string></dict></"
         "array></dict>",
         "item:Untitled/u"},
        {"<dict><key>Name</key><integer>4</integer><key>Children</key><array><dict><key>Path</key><string>p</string></"
         "dict></array></dict>",
         "db:Untitled/p"},
    };
    for (const Row& row : rows) {
        const FavoritesFile file = FavoritesFile::ofArray(row.entry);
        const auto items = file.store.readFromPlist();
        EXPECT_EQ(items.empty() ? "" : items.front().id, row.expected) << row.entry;
        EXPECT_EQ(file.store.readExcerpt([](const auto&) { return true; }).items, items) << row.entry;
    }
}

TEST(FavoritesStore, ReadsValuesStrictly) {
    struct Row {
        const char* members;
        const char* name;
        std::int64_t label;
        double date;
        bool icon;
        const char* symbol;
    };
    const double never = platform::Date::distantPast().secondsSinceReferenceDate;
    const Row rows[]{
        {"", "Untitled", 0, never, false, "doc"},
        {"<key>Name</key><string></string><key>Label</key><integer>-2</integer>", "", -2, never, false, "doc"},
        {"<key>Name</key><true/><key>Label</key><real>3</real>", "Untitled", 0, never, false, "doc"},
        {"<key>Label</key><string>3</string><key>Type</key><string>1</string>", "Untitled", 0, never, false, "doc"},
        {"<key>Label</key><true/><key>Type</key><integer>1</integer>", "Untitled", 0, never, false, "folder"},
        {"<key>Date</key><date>2001-01-01T00:00:10Z</date>", "Untitled", 0, 10, false, "doc"},
        {"<key>Date</key><integer>0</integer>", "Untitled", 0, 0, false, "doc"},
        {"<key>Date</key><real>-1.5</real>", "Untitled", 0, -1.5, false, "doc"},
        {"<key>Date</key><string>2001-01-01T00:00:10Z</string>", "Untitled", 0, never, false, "doc"},
        {"<key>Date</key><true/>", "Untitled", 0, never, false, "doc"},
        {"<key>Icon</key><data>aWNvbg==</data>", "Untitled", 0, never, true, "doc"},
        {"<key>Icon</key><string>icon</string>", "Untitled", 0, never, false, "doc"},
    };
    for (const Row& row : rows) {
        const std::string entry = "<dict><key>UUID</key><string>u</string>" + std::string(row.members) + "</dict>";
        const auto items = FavoritesFile::ofArray(entry).store.readFromPlist();
        ASSERT_EQ(items.size(), 1U) << row.members;
        const FavoritesItem& item = items.front();
        EXPECT_EQ(item.name, row.name) << row.members;
        EXPECT_EQ(item.label, row.label) << row.members;
        EXPECT_EQ(item.date.secondsSinceReferenceDate, row.date) << row.members;
        EXPECT_EQ(item.icon, row.symbol) << row.members;
        ASSERT_EQ(item.iconData.has_value(), row.icon) << row.members;
        if (row.icon) {
            EXPECT_EQ(item.iconData->decoded().bytes(), "icon");
        }
    }
}

TEST(FavoritesStore, ReadsTheOldTextFormToo) {
    const FavoritesFile file("( { Name = Work; Children = ( { UUID = u1; Name = \"A note\"; Type = 1; } ); } )");
    const auto items = file.store.readFromPlist();
    ASSERT_EQ(items.size(), 1U);
    // In that form a number is a text, and a text is no type.
    EXPECT_EQ(outline(items.front()),
              "item:Work/u1 | A note | doc | 0 | - | Work | x-foliovault-item://u1?widget=favorites | -");
}

TEST(FavoritesStore, OffersGroupsThatHaveAName) {
    const FavoritesFile file = FavoritesFile::ofArray(R"(
        <dict><key>Name</key><string>B</string><key>Children</key><array/></dict>
        <dict><key>Children</key><array><dict><key>UUID</key><string>u</string></dict></array></dict>
        <dict><key>Name</key><string>no group</string><key>UUID</key><string>u</string></dict>
        <dict><key>Name</key><string>A</string><key>Children</key><false/></dict>
        <dict><key>Name</key><integer>1</integer><key>Children</key><array/></dict>
        <dict><key>Name</key><string>B</string><key>Children</key><array/></dict>)");
    EXPECT_THAT(file.store.groupNames(), ElementsAre("B", "A", "B"));
}

TEST(FavoritesStore, CountsAllAndBuildsTheFirst) {
    std::string children;
    for (int i = 0; i < 40; ++i) {
        children += "<dict><key>UUID</key><string>" + std::to_string(i) + "</string></dict><dict/>";
    }
    const FavoritesFile file =
        FavoritesFile::ofArray("<dict><key>Name</key><string>G</string><key>Children</key><array>" + children +
                               "</array></dict><dict><key>UUID</key><string>top</string></dict>");
    const auto excerpt = file.store.readExcerpt([](const auto& group) { return group == "G"; });
    EXPECT_EQ(excerpt.count, 40);
    ASSERT_EQ(excerpt.items.size(), 16U);
    EXPECT_EQ(excerpt.items.back().id, "item:G/15");
    EXPECT_EQ(file.store.readExcerpt([](const auto& group) { return !group; }).count, 1);
    EXPECT_EQ(file.store.readExcerpt([](const auto&) { return true; }).count, 41);
}

} // namespace
} // namespace foliovault
