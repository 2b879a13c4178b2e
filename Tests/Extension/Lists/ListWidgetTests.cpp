// What the three list widgets declare and draw alike.

#include "Extension/Favorites/FavoritesWidget.h"
#include "Extension/ReadingList/ReadingListWidget.h"
#include "Extension/Workspaces/WorkspacesWidget.h"

#include "Tests/Extension/Lists/StoreFile.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::json;
using platform::WidgetFamily;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::StoreFile;

struct Row {
    std::unique_ptr<platform::Widget> widget;
    std::string kind;
    std::string displayName;
    std::vector<std::string> previewNames;
    /// A text that only the samples have, and the one that says that there is nothing.
    std::string sample;
    std::string empty;
};

TEST(ListWidgets, DeclareFourFamiliesAndFourPreviewsDrawnWithoutReading) {
    const StoreFile<FavoritesStore> favorites;
    const StoreFile<ReadingListStore> readingList;
    const StoreFile<WorkspaceStore> workspaces;
    std::vector<Row> rows;
    rows.push_back({FavoritesWidget{FavoritesProvider(favorites.store)}.body(),
                    "FavoritesWidget",
                    "Favorites",
                    {"Favorites Small", "Favorites Medium", "Favorites Large", "Favorites Empty"},
                    "~/Databases/Research.fvBase2",
                    "No Favorites"});
    rows.push_back({ReadingListWidget{ReadingListProvider(readingList.store)}.body(),
                    "ReadingListWidget",
                    "Reading List",
                    {"Small", "Medium", "Large", "Empty"},
                    "Meeting Notes – Q1 Review",
                    "No Items"});
    rows.push_back({WorkspacesWidget{WorkspacesProvider(workspaces.store)}.body(),
                    "WorkspacesWidget",
                    "Workspaces",
                    {"Workspaces Small", "Workspaces Medium", "Workspaces Large", "Workspaces Empty"},
                    "5 databases",
                    "No Workspaces"});
    for (const Row& row : rows) {
        const auto description = row.widget->description();
        EXPECT_EQ(description.kind, row.kind);
        EXPECT_EQ(description.displayName, row.displayName);
        EXPECT_EQ(description.configurationTitle, row.displayName);
        EXPECT_EQ(description.description, description.configurationDescription);
        EXPECT_EQ(description.containerBackground, "tertiaryFill");
        EXPECT_THAT(description.families, ElementsAre(WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large,
                                                      WidgetFamily::extraLarge));
        std::vector<std::string> names;
        for (const auto& preview : row.widget->previews()) {
            names.push_back(preview.name);
        }
        EXPECT_EQ(names, row.previewNames);
        EXPECT_EQ(row.widget->previews()[1].family, WidgetFamily::medium);
        EXPECT_EQ(row.widget->previews()[2].family, WidgetFamily::large);
        EXPECT_THAT(json(row.widget->preview(2).at(0).view), HasSubstr(row.sample));
        EXPECT_THAT(json(row.widget->preview(3).at(0).view), HasSubstr('"' + row.empty + '"'));
        EXPECT_THAT(json(row.widget->placeholder({.family = WidgetFamily::large}).view), HasSubstr(row.sample));
    }
    EXPECT_EQ(favorites.readCount() + readingList.readCount() + workspaces.readCount(), 0);
}

TEST(ListWidgets, ShowTheirEmptyViewInEveryFamilyWhenThereIsNothingToShow) {
    const auto message = [](const std::string& symbol, const std::string& title, const std::string& explanation) {
        return R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":")" + symbol +
               R"(","font":{"style":"largeTitle"},"foreground":"secondary"},{"type":"text","text":")" + title +
               R"(","font":{"style":"headline"},"foreground":"secondary"},{"type":"text","text":")" + explanation +
               R"(","textAlignment":"center","font":{"style":"caption"},"foreground":"tertiary"}]})";
    };
    const StoreFile<FavoritesStore> favorites;
    const StoreFile<ReadingListStore> readingList;
    const StoreFile<WorkspaceStore> workspaces;
    std::vector<std::pair<std::unique_ptr<platform::Widget>, std::string>> rows;
    rows.emplace_back(FavoritesWidget{FavoritesProvider(favorites.store)}.body(),
                      message("star", "No Favorites", "Add favorites in FOLIOvault to see them here."));
    rows.emplace_back(ReadingListWidget{ReadingListProvider(readingList.store)}.body(),
                      message("text.book.closed", "No Items", "Your FOLIOvault reading list is empty."));
    rows.emplace_back(WorkspacesWidget{WorkspacesProvider(workspaces.store)}.body(),
                      message("rectangle.stack", "No Workspaces", "Create workspaces in FOLIOvault to see them here."));
    for (const auto& [widget, expected] : rows) {
        for (const auto family : {WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large,
                                  WidgetFamily::extraLarge, WidgetFamily::unknown}) {
            const auto entry = widget->snapshot({}, {.family = family});
            ASSERT_TRUE(entry);
            EXPECT_EQ(json(entry->view), expected);
        }
    }
}

} // namespace
} // namespace foliovault
