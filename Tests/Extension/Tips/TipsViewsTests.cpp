#include "Extension/Tips/TipsViews.h"
#include "Extension/Tips/TipsWidget.h"

#include "Platform/Foundation/JsonWriter.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace foliovault {
namespace {

using platform::json;
using platform::WidgetFamily;

constexpr auto families = {WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large, WidgetFamily::extraLarge};

TEST(TipsEntryView, ShowsTheEmptyViewWithoutATip) {
    for (const auto family : families) {
        EXPECT_EQ(
            json(TipsEntryView{{}}.body({.family = family})),
            R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":"lightbulb.slash","font":{"style":"largeTitle"},"foreground":"secondary"},{"type":"text","text":"No Tips","font":{"style":"headline"},"foreground":"secondary"},{"type":"text","text":"Tips could not be loaded.","textAlignment":"center","font":{"style":"caption"},"foreground":"tertiary"}]})");
    }
}

TEST(TipsEntryView, ShowsMoreOfTheTipTheLargerTheFamily) {
    setenv("LC_ALL", "C", 1);
    setenv("TZ", "UTC", 1);
    const TipsEntry entry{
        .date = {},
        .tip = TipItem{.title = "T", .description = "", .pubDate = *platform::fromRfc3339("2025-03-16T12:00:00Z")},
        .mode = TipsMode::tipOfTheDay};
    const std::string header =
        R"({"type":"padding","bottom":6,"child":{"type":"hstack","alignment":"firstTextBaseline","children":[{"type":"text","text":"Tips","font":{"style":"headline"}},{"type":"spacer"},{"type":"text","text":"Tip of the Day","font":{"style":"caption"},"foreground":"secondary"}]}},)";
    const std::string tight = R"({"type":"vstack","alignment":"leading","spacing":0,"children":[)" + header;
    const std::string end = R"(,{"type":"spacer","minLength":0}]})";
    const auto picture = [&entry](WidgetFamily family) { return json(TipsEntryView{entry}.body({.family = family})); };
    EXPECT_EQ(
        picture(WidgetFamily::small),
        R"({"type":"vstack","alignment":"leading","spacing":4,"children":[{"type":"hstack","children":[{"type":"text","text":"Tips","font":{"style":"headline"}},{"type":"spacer"},{"type":"symbol","symbol":"lightbulb","foreground":"yellow"}]},{"type":"spacer","minLength":2},{"type":"text","text":"T","lineLimit":4,"font":{"style":"callout"},"foreground":"primary"})" +
            end);
    EXPECT_EQ(
        picture(WidgetFamily::medium),
        tight +
            R"({"type":"text","text":"T","lineLimit":2,"font":{"style":"callout","weight":"semibold"}},{"type":"padding","top":2,"child":{"type":"text","text":"","lineLimit":3,"font":{"style":"caption"},"foreground":"secondary"}})" +
            end);
    EXPECT_EQ(picture(WidgetFamily::unknown), picture(WidgetFamily::medium));
    EXPECT_EQ(
        picture(WidgetFamily::large),
        tight +
            R"({"type":"text","text":"T","lineLimit":3,"font":{"style":"callout","weight":"semibold"}},{"type":"padding","top":2,"child":{"type":"text","text":"Mar 16, 2025","font":{"style":"caption2"},"foreground":"tertiary"}},{"type":"padding","top":6,"bottom":6,"child":{"type":"divider"}},{"type":"text","text":"","font":{"style":"caption"},"foreground":"secondary"})" +
            end);
    EXPECT_EQ(
        picture(WidgetFamily::extraLarge),
        tight +
            R"({"type":"text","text":"T","lineLimit":3,"font":{"style":"title3","weight":"semibold"}},{"type":"padding","top":2,"child":{"type":"text","text":"Mar 16, 2025","font":{"style":"caption"},"foreground":"tertiary"}},{"type":"padding","top":8,"bottom":8,"child":{"type":"divider"}},{"type":"text","text":"","font":{"style":"callout"},"foreground":"secondary"})" +
            end);
}

TEST(TipsWidget, DeclaresItsPreviewsAndOpensTheTip) {
    const auto widget = TipsWidget().body();
    EXPECT_EQ(widget->description().displayName, "Tips");
    std::vector<std::string> names;
    for (const auto& preview : widget->previews()) {
        names.push_back(preview.name);
    }
    EXPECT_THAT(names,
                ::testing::ElementsAre("Tips Small", "Tips Medium", "Tips Large", "Tips Extra Large", "Tips Empty"));
    EXPECT_EQ(widget->previews()[3].family, WidgetFamily::extraLarge);
    EXPECT_EQ(widget->preview(3).size(), 3U);
    EXPECT_THAT(*widget->preview(0).at(1).widgetURL,
                ::testing::MatchesRegex("x-foliovault://open-url\\?location=https://.*/blog/sample2&widget=tips"));
    EXPECT_EQ(widget->preview(4).at(0).widgetURL, std::nullopt);
    EXPECT_TRUE(widget->placeholder({}).widgetURL);
}

} // namespace
} // namespace foliovault
