#include "Extension/Shared/FOLIOvaultPaths.h"

#include "Tests/Support/FakeUserDatabase.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

TEST(FOLIOvaultPaths, LieBelowTheRecordedHome) {
    const FOLIOvaultPaths paths(platform::FakeUserDatabase("/home/Ada Ä", "/container"));
    EXPECT_EQ(paths.realHome, "/home/Ada Ä");
    EXPECT_EQ(paths.favoritesURL.path(), "/home/Ada Ä/Library/Application Support/FOLIOvault/Favorites.plist");
    EXPECT_EQ(paths.appSupportURL.absoluteString(),
              "file:///home/Ada%20%C3%84/Library/Application%20Support/FOLIOvault");
    EXPECT_EQ(paths.readingListURL.path(), paths.appSupportURL.path() + "/ReadingList.plist");
    EXPECT_EQ(paths.workspacesURL.path(), paths.appSupportURL.path() + "/OrderedWorkspaces.plist");
}

TEST(FOLIOvaultPaths, FallBackOnTheProcessesHome) {
    const FOLIOvaultPaths paths(platform::FakeUserDatabase(std::nullopt, "/container/"));
    EXPECT_EQ(paths.realHome, "/container/");
    EXPECT_EQ(paths.favoritesURL.path(), "/container/Library/Application Support/FOLIOvault/Favorites.plist");
}

} // namespace
} // namespace foliovault
