#include "Extension/Favorites/FavoritesViews.h"

#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::json;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(FavoritesEntryView, CountsAllFavoritesInItsHeader) {
    const FavoritesEntry entry{.date = {}, .items = FavoritesItem::sampleItems(), .displayCount = 1234};
    EXPECT_THAT(json(FavoritesEntryView{entry}.body({.family = platform::WidgetFamily::medium})),
                ::testing::AllOf(HasSubstr("\"1234 items\""), HasSubstr("\"+1229 more\""), HasSubstr("\"Today\"")));
    EXPECT_THAT(json(FavoritesEntryView{entry}.body({.family = platform::WidgetFamily::small})),
                ::testing::AllOf(Not(HasSubstr("items")), HasSubstr("\"+1230 more\""), Not(HasSubstr("\"Today\""))));
}

} // namespace
} // namespace foliovault
