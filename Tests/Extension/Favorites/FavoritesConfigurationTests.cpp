#include "Extension/Favorites/FavoritesConfiguration.h"

#include "Tests/Extension/Lists/StoreFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::ElementsAre;
using FavoritesFile = testing::StoreFile<FavoritesStore>;

std::vector<std::string> ids(const std::vector<FavoritesGroupOption>& options) {
    std::vector<std::string> all;
    for (const FavoritesGroupOption& option : options) {
        all.push_back(option.id);
    }
    return all;
}

std::string group(const std::string& name) {
    return "<dict><key>Name</key><string>" + name + "</string><key>Children</key><array/></dict>";
}

TEST(FavoritesGroupQuery, SuggestsAllAndThenTheFilesGroups) {
    const FavoritesFile file = FavoritesFile::ofArray(group("Work") + group("Äpfel") + group("Work"));
    EXPECT_THAT(ids(FavoritesGroupQuery(file.store).suggestedEntities()), ElementsAre("_all", "Work", "Äpfel", "Work"));
    const FavoritesFile absent;
    EXPECT_THAT(ids(FavoritesGroupQuery(absent.store).suggestedEntities()), ElementsAre("_all"));
    EXPECT_EQ(FavoritesGroupQuery(file.store).defaultResult().id, "_all");
}

TEST(FavoritesGroupQuery, FindsByIdAndByTheTitleOfAll) {
    const FavoritesFile file = FavoritesFile::ofArray(group("Work") + group("ÄPFEL") + group("Hallway") + group("a_b"));
    const FavoritesGroupQuery query(file.store);
    EXPECT_THAT(ids(query.entitiesMatching("")), ElementsAre("_all", "Work", "ÄPFEL", "Hallway", "a_b"));
    EXPECT_THAT(ids(query.entitiesMatching("ALL")), ElementsAre("_all", "Hallway"));
    EXPECT_THAT(ids(query.entitiesMatching("_")), ElementsAre("_all", "a_b"));
    EXPECT_THAT(ids(query.entitiesMatching("äpfel")), ElementsAre("ÄPFEL"));
    EXPECT_THAT(ids(query.entitiesMatching("apfel")), ElementsAre());
}

TEST(FavoritesGroupQuery, TakesIdentifiersAsTheyAre) {
    const FavoritesFile absent;
    const std::vector<std::string> identifiers{"Gone", "_all", "Gone"};
    EXPECT_THAT(ids(FavoritesGroupQuery(absent.store).entitiesFor(identifiers)), ElementsAre("Gone", "_all", "Gone"));
    EXPECT_EQ(absent.readCount(), 0);
}

TEST(FavoritesGroupOption, IsTitledByItsName) {
    EXPECT_EQ(FavoritesGroupOption::all().displayRepresentation(), "All");
    EXPECT_EQ(FavoritesGroupOption{"_ALL"}.displayRepresentation(), "_ALL");
}

} // namespace
} // namespace foliovault
