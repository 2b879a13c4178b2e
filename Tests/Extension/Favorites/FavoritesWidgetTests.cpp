#include "Extension/Favorites/FavoritesWidget.h"

#include "Extension/Favorites/FavoritesViews.h"
#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Views/ViewWriter.h"
#include "Tests/Extension/Favorites/FavoritesFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string json(const platform::View& view) {
    std::string text;
    platform::JsonWriter out(text);
    platform::writeView(out, view);
    return text;
}

TEST(FavoritesEntryView, ShowsTheEmptyViewInEveryFamilyWhenThereIsNothingToShow) {
    const FavoritesEntry nothing;
    for (const auto family :
         {platform::WidgetFamily::small, platform::WidgetFamily::medium, platform::WidgetFamily::large,
          platform::WidgetFamily::extraLarge, platform::WidgetFamily::unknown}) {
        EXPECT_EQ(
            json(FavoritesEntryView{nothing}.body({.family = family})),
            R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":"star","font":{"style":"largeTitle"},"foreground":"secondary"},{"type":"text","text":"No Favorites","font":{"style":"headline"},"foreground":"secondary"},{"type":"text","text":"Add favorites in FOLIOvault to see them here.","textAlignment":"center","font":{"style":"caption"},"foreground":"tertiary"}]})");
    }
}

TEST(FavoritesEntryView, CountsAllFavoritesInItsHeader) {
    const FavoritesEntry entry{.date = {}, .items = FavoritesItem::sampleItems(), .displayCount = 1234};
    EXPECT_THAT(json(FavoritesEntryView{entry}.body({.family = platform::WidgetFamily::medium})),
                ::testing::AllOf(HasSubstr("\"1234 items\""), HasSubstr("\"+1229 more\""), HasSubstr("\"Today\"")));
    EXPECT_THAT(json(FavoritesEntryView{entry}.body({.family = platform::WidgetFamily::small})),
                ::testing::AllOf(Not(HasSubstr("items")), HasSubstr("\"+1230 more\""), Not(HasSubstr("\"Today\""))));
}

TEST(FavoritesWidget, DeclaresItsPreviewsAndDrawsThemWithoutReading) {
    const testing::FavoritesFile file;
    const auto widget = FavoritesWidget{FavoritesProvider(file.store)}.body();
    const auto previews = widget->previews();
    ASSERT_EQ(previews.size(), 4U);
    EXPECT_EQ(previews[2].name, "Favorites Large");
    EXPECT_EQ(previews[2].family, platform::WidgetFamily::large);
    EXPECT_THAT(json(widget->preview(2).at(0).view), HasSubstr("~/Databases/Research.fvBase2"));
    EXPECT_THAT(json(widget->preview(3).at(0).view), HasSubstr("No Favorites"));
    EXPECT_EQ(file.files.readCount(file.paths.favoritesURL.path()), 0);
}

} // namespace
} // namespace foliovault
