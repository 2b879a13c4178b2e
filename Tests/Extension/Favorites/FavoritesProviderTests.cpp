#include "Extension/Favorites/FavoritesProvider.h"

#include "Tests/Extension/Favorites/FavoritesFile.h"
#include "Tests/Support/FixedClock.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

using testing::FavoritesFile;

std::string favorites(int count) {
    std::string entries;
    for (int i = 0; i < count; ++i) {
        entries += "<dict><key>UUID</key><string>" + std::to_string(i) + "</string></dict>";
    }
    return entries;
}

std::string group(const std::string& name, int count) {
    return "<dict><key>Name</key><string>" + name + "</string><key>Children</key><array>" + favorites(count) +
           "</array></dict>";
}

TEST(FavoritesProvider, ShowsTheFirstSixteenOfTheChosenGroup) {
    const FavoritesFile file =
        FavoritesFile::ofArray(group("Work", 17) + group("work", 2) + group("_all", 1) + favorites(3));
    const platform::FixedClock clock({1000});
    const FavoritesProvider provider(file.store, clock);
    struct Row {
        const char* group;
        std::size_t items;
        std::int64_t count;
    };
    for (const Row& row :
         {Row{"_all", 16, 23}, Row{"Work", 16, 17}, Row{"work", 2, 2}, Row{"WORK", 0, 0}, Row{"", 0, 0}}) {
        const auto timeline = provider.timeline({.group = {row.group}});
        ASSERT_EQ(timeline.entries.size(), 1U);
        EXPECT_EQ(timeline.entries[0].items.size(), row.items) << row.group;
        EXPECT_EQ(timeline.entries[0].displayCount, row.count) << row.group;
        EXPECT_EQ(timeline.entries[0].date, platform::Date{1000});
        EXPECT_EQ(timeline.reload.date, platform::Date{1300});
    }
    EXPECT_EQ(provider.snapshot({}).displayCount, 23);
}

TEST(FavoritesProvider, ReadsTheFileAfreshForEachRequestButNoneForAPlaceholder) {
    FavoritesFile file = FavoritesFile::ofArray(favorites(2));
    const platform::FixedClock clock;
    const FavoritesProvider provider(file.store, clock);
    EXPECT_EQ(provider.placeholder().items.size(), 5U);
    EXPECT_EQ(provider.placeholder().displayCount, 5);
    EXPECT_EQ(file.files.readCount(file.paths.favoritesURL.path()), 0);
    EXPECT_EQ(provider.snapshot({}).displayCount, 2);
    file.files.write(file.paths.favoritesURL.path(), "<array>" + favorites(3) + "</array>");
    EXPECT_EQ(provider.snapshot({}).displayCount, 3);
    file.files.remove(file.paths.favoritesURL.path());
    EXPECT_EQ(provider.snapshot({}).displayCount, 0);
}

} // namespace
} // namespace foliovault
