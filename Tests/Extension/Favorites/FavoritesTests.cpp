// What the Favorites widget makes of its file. Values of the wrong kind are told apart by the tests of bad libraries.

#include "Extension/Favorites/FavoritesWidget.h"

#include "Tests/Extension/Lists/StoreFile.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::json;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using File = testing::StoreFile<FavoritesStore>;

constexpr auto none = std::nullopt;

/// Lines with what is seen of the items.
std::vector<std::string> outlines(const std::vector<FavoritesItem>& items) {
    std::vector<std::string> lines;
    for (const FavoritesItem& item : items) {
        const auto url = item.displayURL();
        lines.push_back(item.id + " | " + item.name + " | " + std::string(item.icon) + " | " +
                        item.displaySubtitle().value_or("-") + " | " + (url ? url->absoluteString() : "-"));
    }
    return lines;
}

TEST(FavoritesStore, ReadsEveryKindOfEntry) {
    const File file = File::ofArray(R"(
        <dict><key>Name</key><string>Work</string><key>Children</key><array>
            <dict><key>Name</key><string>Base</string><key>Path</key><string>/home/ada/A &amp; B</string></dict>
            <dict><key>Name</key><string>Note</string><key>UUID</key><string>U-1</string>
                  <key>Type</key><integer>124</integer><key>Location</key><string>In › Box</string></dict>
            <dict><key>SIUUID</key><string>S-1</string><key>Location</key><string>ignored</string></dict>
        </array></dict>
        <dict><key>UUID</key><string>U-1</string><key>Name</key><string>Note</string></dict>)");
    EXPECT_THAT(
        outlines(file.store.readFromPlist()),
        ElementsAre("db:Work//home/ada/A & B | Base | cylinder.split.1x2 | ~/A & B | "
                    "x-foliovault://open-path?path=/home/ada/A%20%26%20B&widget=favorites",
                    "item:Work/U-1 | Note | doc.plaintext | In › Box | x-foliovault-item://U-1?widget=favorites",
                    "si:Work/S-1 | Untitled | gearshape.2 | Work | "
                    "x-foliovault-smartgroup://S-1?widget=favorites",
                    "item:U-1 | Note | doc | - | x-foliovault-item://U-1?widget=favorites"));
}

TEST(FavoritesStore, TakesEachEntryAsWellAsItCan) {
    const std::pair<const char*, std::vector<std::string>> rows[]{
        {"{ Name = n; }", {}},
        {"{ UUID = u; Path = /p; }", {"db:/p"}},
        {"{ UUID = u; Path = (); }", {"item:u"}},
        {"{ SIUUID = s; UUID = u; }", {"item:u"}},
        {"{ Children = (x); UUID = u; }", {"item:u"}},
        {"{ Children = (); UUID = u; }", {}},
        {"{ Children = ( { Children = (); UUID = u; } ); }", {"item:Untitled/u"}},
        {"{ Name = (); Children = ( { Path = p; } ); }", {"db:Untitled/p"}},
        {"{ UUID = u; }, { UUID = u; }", {"item:u", "item:u"}},
    };
    for (const auto& [entries, expected] : rows) {
        std::vector<std::string> ids;
        for (const auto& item : File("( " + std::string(entries) + " )").store.readFromPlist()) {
            ids.push_back(item.id);
        }
        EXPECT_EQ(ids, expected) << entries;
    }
}

TEST(FavoritesStore, TakesADateOrSecondsSince2001) {
    const double never = platform::Date::distantPast().secondsSinceReferenceDate;
    const std::pair<const char*, double> rows[]{{"<date>2001-01-01T00:00:10Z</date>", 10},
                                                {"<integer>0</integer>", 0},
                                                {"<real>-1.5</real>", -1.5},
                                                {"<string>2001-01-01T00:00:10Z</string>", never},
                                                {"<true/>", never}};
    for (const auto& [value, expected] : rows) {
        const auto file =
            File::ofArray("<dict><key>UUID</key><string>u</string><key>Date</key>" + std::string(value) + "</dict>");
        EXPECT_EQ(file.store.readFromPlist().at(0).displayDate().secondsSinceReferenceDate, expected) << value;
    }
}

TEST(FavoritesItem, HasTheSubtitleThatSaysMost) {
    const std::pair<const char*, std::optional<std::string>> rows[]{
        {"{ UUID = u; Location = here; }", "here"},
        {"{ UUID = u; }", none},
        {"{ Name = Work; Children = ( { UUID = u; } ); }", "Work"},
        {"{ Name = Work; Children = ( { Path = /elsewhere/x; } ); }", "/elsewhere/x"},
        {"{ Path = /home/ada/Databases/x; Location = ignored; }", "~/Databases/x"},
        {"{ Path = /home/adab/x; }", "~b/x"},
    };
    for (const auto& [entry, expected] : rows) {
        const File file("( " + std::string(entry) + " )");
        EXPECT_EQ(file.store.readFromPlist().at(0).displaySubtitle(), expected) << entry;
    }
    EXPECT_EQ((FavoritesItem{.groupName = "Work", .isDatabase = true}).displaySubtitle(), "Database");
}

TEST(FavoritesItem, HasTheColorOfItsLabel) {
    using enum platform::Color;
    const std::pair<std::int64_t, std::optional<platform::Color>> rows[]{
        {-1, none}, {0, none}, {1, red},    {2, orange}, {3, yellow},
        {4, green}, {5, blue}, {6, purple}, {7, gray},   {8, none}};
    for (const auto& [label, color] : rows) {
        EXPECT_EQ((FavoritesItem{.label = label}).dotColor(), color) << label;
    }
    EXPECT_EQ((FavoritesItem{.urlString = "x-foliovault-item://A B"}).displayURL(), none);
}

TEST(FavoritesItem, IsKnownByItsIdAlone) {
    const FavoritesItem one{.id = "same", .name = "one"};
    EXPECT_EQ(one, (FavoritesItem{.id = "same", .name = "two"}));
    EXPECT_FALSE(one == (FavoritesItem{.id = "other", .name = "one"}));
    EXPECT_EQ(std::hash<FavoritesItem>{}(one), std::hash<FavoritesItem>{}({.id = "same"}));
}

TEST(FavoritesProvider, ShowsTheChosenGroup) {
    const File file(
        "( { Name = Work; Children = ( { UUID = 1; }, { UUID = 2; } ); }, { UUID = 3; },"
        "  { Name = work; Children = ( { UUID = 4; } ); }, { Name = \"_all\"; Children = ( { UUID = 5; } ); },"
        "  { Name = Work; Children = ( { UUID = 6; } ); } )");
    const std::pair<const char*, std::int64_t> rows[]{{"_all", 6}, {"Work", 3}, {"work", 1}, {"WORK", 0}, {"", 0}};
    for (const auto& [group, count] : rows) {
        const auto entry = FavoritesProvider(file.store).snapshot({.group = {group}});
        EXPECT_EQ(entry.displayCount, count) << group;
        EXPECT_EQ(entry.items.size(), static_cast<std::size_t>(count)) << group;
    }
}

TEST(FavoritesEntryView, CountsAllFavoritesInItsHeader) {
    const FavoritesEntry entry{.items = FavoritesItem::sampleItems(), .displayCount = 1234};
    EXPECT_THAT(json(FavoritesEntryView{entry}.body({.family = platform::WidgetFamily::medium})),
                AllOf(HasSubstr("\"1234 items\""), HasSubstr("\"+1229 more\""), HasSubstr("\"Today\"")));
    EXPECT_THAT(json(FavoritesEntryView{entry}.body({.family = platform::WidgetFamily::small})),
                AllOf(Not(HasSubstr("items")), HasSubstr("\"+1230 more\""), Not(HasSubstr("\"Today\""))));
}

} // namespace
} // namespace foliovault
