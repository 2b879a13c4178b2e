// What the Favorites widget makes of its file. The tests of bad libraries have values of the wrong kind.

#include "Extension/Favorites/FavoritesWidget.h"

#include "Tests/Extension/Lists/MemoryLibrary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::ElementsAre;
using File = testing::StoreFile<FavoritesStore>;

constexpr auto none = std::nullopt;

/// Returns lines with "id | subtitle" of the items.
std::vector<std::string> shown(const std::vector<FavoritesItem>& items) {
    std::vector<std::string> lines;
    for (const FavoritesItem& item : items) {
        lines.push_back(item.id + " | " + item.displaySubtitle().value_or("-"));
    }
    return lines;
}

TEST(FavoritesStore, ReadsEveryKindOfEntry) {
    const File file(R"(<array>
        <dict><key>Name</key><string>Work</string><key>Children</key><array>
            <dict><key>Name</key><string>Base</string><key>Path</key><string>/home/ada/A &amp; B</string></dict>
            <dict><key>Name</key><string>Note</string><key>UUID</key><string>U-1</string>
                  <key>Type</key><integer>124</integer></dict>
            <dict><key>SIUUID</key><string>S-1</string></dict>
        </array></dict>
        <dict><key>UUID</key><string>U-1</string><key>Name</key><string>Note</string></dict></array>)");
    std::vector<std::string> lines;
    for (const FavoritesItem& item : file.store.readFromPlist()) {
        lines.push_back(item.name + " | " + std::string(item.icon) + " | " + item.displayURL()->absoluteString());
    }
    EXPECT_THAT(lines, ElementsAre("Base | cylinder.split.1x2 | "
                                   "x-foliovault://open-path?path=/home/ada/A%20%26%20B&widget=favorites",
                                   "Note | doc.plaintext | x-foliovault-item://U-1?widget=favorites",
                                   "Untitled | gearshape.2 | x-foliovault-smartgroup://S-1?widget=favorites",
                                   "Note | doc | x-foliovault-item://U-1?widget=favorites"));
    EXPECT_EQ((FavoritesItem{.urlString = "x-foliovault-item://A B"}).displayURL(), none);
}

TEST(FavoritesStore, TakesEachEntryAsWellAsItCan) {
    const std::pair<const char*, std::vector<std::string>> rows[]{
        {"{ Name = n; }", {}},
        {"{ UUID = u; Path = /p; Location = ignored; }", {"db:/p | /p"}},
        {"{ Path = /home/ada/Databases/x; }", {"db:/home/ada/Databases/x | ~/Databases/x"}},
        {"{ Path = /home/adab/x; }", {"db:/home/adab/x | ~b/x"}},
        {"{ UUID = u; Path = (); Location = here; }", {"item:u | here"}},
        {"{ SIUUID = s; UUID = u; }", {"item:u | -"}},
        {"{ SIUUID = s; Location = ignored; }", {"si:s | -"}},
        {"{ Children = (x); UUID = u; }", {"item:u | -"}},
        {"{ Children = (); UUID = u; }", {}},
        {"{ Children = ( { Children = (); UUID = u; } ); }", {"item:Untitled/u | Untitled"}},
        {"{ Name = w; Children = ( { Path = p; }, { UUID = u; Location = l; } ); }", {"db:w/p | p", "item:w/u | l"}},
        {"{ UUID = u; }, { UUID = u; }", {"item:u | -", "item:u | -"}},
    };
    for (const auto& [entries, expected] : rows) {
        EXPECT_EQ(shown(File("( " + std::string(entries) + " )").store.readFromPlist()), expected) << entries;
    }
}

TEST(FavoritesStore, TakesADateOrSecondsSince2001) {
    const double never = platform::Date::distantPast().secondsSinceReferenceDate;
    const std::pair<std::string, double> rows[]{{"<date>2001-01-01T00:00:10Z</date>", 10},
                                                {"<integer>0</integer>", 0},
                                                {"<real>-1.5</real>", -1.5},
                                                {"<string>2001-01-01T00:00:10Z</string>", never},
                                                {"<true/>", never}};
    for (const auto& [value, expected] : rows) {
        const File file("<array><dict><key>UUID</key><string/><key>Date</key>" + value + "</dict></array>");
        EXPECT_EQ(file.store.readFromPlist().at(0).displayDate().secondsSinceReferenceDate, expected) << value;
    }
}

TEST(FavoritesItem, HasTheColorOfItsLabelAndIsKnownByItsId) {
    using enum platform::Color;
    const std::optional<platform::Color> colors[]{none, red, orange, yellow, green, blue, purple, gray, none};
    for (std::int64_t label = 0; label < std::ssize(colors); ++label) {
        EXPECT_EQ((FavoritesItem{.label = label}).dotColor(), colors[label]) << label;
    }
    EXPECT_EQ((FavoritesItem{.label = -1}).dotColor(), none);
    const FavoritesItem one{.id = "same", .name = "one"};
    EXPECT_EQ(one, (FavoritesItem{.id = "same", .name = "two"}));
    EXPECT_FALSE(one == (FavoritesItem{.id = "other", .name = "one"}));
    EXPECT_EQ(std::hash<FavoritesItem>{}(one), std::hash<FavoritesItem>{}({.id = "same"}));
    EXPECT_EQ((FavoritesItem{.isDatabase = true}).displaySubtitle(), "Database");
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

TEST(FavoritesGroupQuery, SuggestsAllAndTheNamedGroupsAndFindsThem) {
    const File file("( { Name = Work; Children = (); }, { Children = ( { UUID = u; } ); }, { Name = other; UUID = u; },"
                    "  { Name = \"ÄPFEL\"; Children = x; }, { Name = (); Children = (); },"
                    "  { Name = Hallway; Children = (); }, { Name = a_b; Children = (); } )");
    const FavoritesGroupQuery query(file.store);
    const auto ids = [](const std::vector<FavoritesGroupOption>& options) {
        std::vector<std::string> all;
        for (const FavoritesGroupOption& option : options) {
            all.push_back(option.id);
        }
        return all;
    };
    EXPECT_THAT(ids(query.suggestedEntities()), ElementsAre("_all", "Work", "ÄPFEL", "Hallway", "a_b"));
    const std::pair<const char*, std::vector<std::string>> rows[]{{"", {"_all", "Work", "ÄPFEL", "Hallway", "a_b"}},
                                                                  {"ALL", {"_all", "Hallway"}},
                                                                  {"_", {"_all", "a_b"}},
                                                                  {"äpfel", {"ÄPFEL"}},
                                                                  {"apfel", {}}};
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(ids(query.entitiesMatching(text)), expected) << text;
    }
    const std::vector<std::string> identifiers{"Gone", "_all", "Gone"};
    EXPECT_EQ(ids(query.entitiesFor(identifiers)), identifiers);
    EXPECT_EQ(FavoritesGroupOption::all().displayRepresentation(), "All");
}

} // namespace
} // namespace foliovault
