#include "Extension/Favorites/FavoritesProvider.h"

#include "Tests/Extension/Lists/StoreFile.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

using FavoritesFile = testing::StoreFile<FavoritesStore>;

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
    const FavoritesProvider provider(file.store);
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
    }
    EXPECT_EQ(provider.snapshot({}).displayCount, 23);
}

} // namespace
} // namespace foliovault
