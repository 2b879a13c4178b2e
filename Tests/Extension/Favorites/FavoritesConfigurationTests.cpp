#include "Extension/Favorites/FavoritesConfiguration.h"

#include "Tests/Extension/Lists/StoreFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::ElementsAre;
using File = testing::StoreFile<FavoritesStore>;

std::vector<std::string> ids(const std::vector<FavoritesGroupOption>& options) {
    std::vector<std::string> all;
    for (const FavoritesGroupOption& option : options) {
        all.push_back(option.id);
    }
    return all;
}

TEST(FavoritesGroupQuery, SuggestsAllAndThenTheGroupsThatHaveAName) {
    const File file = File::ofArray(R"(
        <dict><key>Name</key><string>Work</string><key>Children</key><array/></dict>
        <dict><key>Children</key><array><dict><key>UUID</key><string>u</string></dict></array></dict>
        <dict><key>Name</key><string>no group</string><key>UUID</key><string>u</string></dict>
        <dict><key>Name</key><string>Äpfel</string><key>Children</key><false/></dict>
        <dict><key>Name</key><integer>1</integer><key>Children</key><array/></dict>
        <dict><key>Name</key><string>Work</string><key>Children</key><array/></dict>)");
    EXPECT_THAT(ids(FavoritesGroupQuery(file.store).suggestedEntities()), ElementsAre("_all", "Work", "Äpfel", "Work"));
    EXPECT_THAT(ids(FavoritesGroupQuery(File().store).suggestedEntities()), ElementsAre("_all"));
}

TEST(FavoritesGroupQuery, FindsByIdAndByTheTitleOfAll) {
    const File file("( { Name = Work; Children = (); }, { Name = \"ÄPFEL\"; Children = (); },"
                    "  { Name = Hallway; Children = (); }, { Name = a_b; Children = (); } )");
    const std::pair<const char*, std::vector<std::string>> rows[]{{"", {"_all", "Work", "ÄPFEL", "Hallway", "a_b"}},
                                                                  {"ALL", {"_all", "Hallway"}},
                                                                  {"_", {"_all", "a_b"}},
                                                                  {"äpfel", {"ÄPFEL"}},
                                                                  {"apfel", {}}};
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(ids(FavoritesGroupQuery(file.store).entitiesMatching(text)), expected) << text;
    }
    EXPECT_EQ(FavoritesGroupOption{"_ALL"}.displayRepresentation(), "_ALL");
    const std::vector<std::string> identifiers{"Gone", "_all", "Gone"};
    EXPECT_EQ(ids(FavoritesGroupQuery(file.store).entitiesFor(identifiers)), identifiers);
}

} // namespace
} // namespace foliovault
