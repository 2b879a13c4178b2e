#include "Extension/Shared/FOLIOvaultPaths.h"

#include "Tests/Support/FakeUserDatabase.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

TEST(FOLIOvaultPaths, LieBelowTheRecordedHomeElseTheProcesses) {
    const FOLIOvaultPaths paths(platform::FakeUserDatabase("/home/Ada Ä", "/container"));
    EXPECT_EQ(paths.realHome, "/home/Ada Ä");
    EXPECT_EQ(paths.appSupportURL.absoluteString(),
              "file:///home/Ada%20%C3%84/Library/Application%20Support/FOLIOvault");
    EXPECT_EQ(FOLIOvaultPaths(platform::FakeUserDatabase(std::nullopt, "/container/")).favoritesURL.path(),
              "/container/Library/Application Support/FOLIOvault/Favorites.plist");
}

} // namespace
} // namespace foliovault
