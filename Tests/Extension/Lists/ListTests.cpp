// What the three lists do alike: their stores with a missing or broken file, their providers, and what their widgets
// declare and draw. And what is only the Workspaces widget's.

#include "Extension/Favorites/FavoritesWidget.h"
#include "Extension/ReadingList/ReadingListWidget.h"
#include "Extension/Workspaces/WorkspacesWidget.h"

#include "Tests/Extension/Lists/MemoryLibrary.h"
#include "Tests/Support/Fakes.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Lists : testing::MemoryLibrary {
    FixedClock clock{{1000}};
    FavoritesStore favorites{library};
    ReadingListStore readingList{library};
    WorkspaceStore workspaces{library};
};

struct List {
    const char* file;
    const char* category;
    const char* kind;
    const char* title;
    const char* previewPrefix;
    /// A text that only the samples have.
    const char* sample;
    /// The symbol, the title and the explanation without items.
    std::array<const char*, 3> empty;
    std::unique_ptr<Widget> (*widget)(const Lists& lists);

    std::string path() const { return std::string("/home/ada/Library/Application Support/FOLIOvault/") + file; }
};

class EveryList : public ::testing::TestWithParam<List> {
  protected:
    /// Returns the view of a timeline of the file as it is now.
    std::string viewIn(WidgetFamily family) const { return json(widget->snapshot({}, {.family = family})->view); }
    void write(const std::string& content) { lists.files.write(list.path(), content); }

    const List& list = GetParam();
    Lists lists;
    const std::unique_ptr<Widget> widget = list.widget(lists);
};

INSTANTIATE_TEST_SUITE_P(
    Lists, EveryList,
    ::testing::Values(
        List{.file = "Favorites.plist",
             .category = "FavoritesStore",
             .kind = "FavoritesWidget",
             .title = "Favorites",
             .previewPrefix = "Favorites ",
             .sample = "~/Databases/Research.fvBase2",
             .empty = {"star", "No Favorites", "Add favorites in FOLIOvault to see them here."},
             .widget =
                 [](const Lists& all) { return FavoritesWidget{FavoritesProvider(all.favorites, all.clock)}.body(); }},
        List{.file = "ReadingList.plist",
             .category = "ReadingListStore",
             .kind = "ReadingListWidget",
             .title = "Reading List",
             .previewPrefix = "",
             .sample = "Meeting Notes – Q1 Review",
             .empty = {"text.book.closed", "No Items", "Your FOLIOvault reading list is empty."},
             .widget =
                 [](const Lists& all) {
                     return ReadingListWidget{ReadingListProvider(all.readingList, all.clock)}.body();
                 }},
        List{.file = "OrderedWorkspaces.plist",
             .category = "WorkspaceStore",
             .kind = "WorkspacesWidget",
             .title = "Workspaces",
             .previewPrefix = "Workspaces ",
             .sample = "5 databases",
             .empty = {"rectangle.stack", "No Workspaces", "Create workspaces in FOLIOvault to see them here."},
             .widget = [](const Lists& all) {
                 return WorkspacesWidget{WorkspacesProvider(all.workspaces, all.clock)}.body();
             }}));

TEST_P(EveryList, LogsWhyAFileHasNoItemsAndShowsThat) {
    const std::string empty =
        std::string(R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":")") + list.empty[0] +
        R"(","font":{"style":"largeTitle"},"foreground":"secondary"},{"type":"text","text":")" + list.empty[1] +
        R"(","font":{"style":"headline"},"foreground":"secondary"},{"type":"text","text":")" + list.empty[2] +
        R"(","textAlignment":"center","font":{"style":"caption"},"foreground":"tertiary"}]})";
    const LogLine unread{LogLevel::debug, list.category, std::string("Could not read ") + list.file};
    const LogLine unparsed{LogLevel::error, list.category, std::string("Could not parse ") + list.file};
    std::vector<LogLine> expected;
    const auto expectEmpty = [&](const std::optional<LogLine>& line) {
        EXPECT_EQ(viewIn(WidgetFamily::medium), empty);
        expected.insert(expected.end(), line ? 1 : 0, line.value_or(LogLine()));
        EXPECT_EQ(lists.log.lines, expected);
    };
    expectEmpty(unread);
    for (const char* content : {"", "hello", "<dict/>", "<array><dict/><array/></array>"}) {
        write(content);
        expectEmpty(unparsed);
    }
    write("<array><dict><key>name</key><string>n</string></dict><dict/></array>");
    expectEmpty(std::nullopt);
    EXPECT_EQ(viewIn(WidgetFamily::unknown), empty);
    EXPECT_EQ(viewIn(WidgetFamily::extraLarge), empty);
    lists.files.makeUnreadable(list.path());
    expectEmpty(unread);
}

TEST_P(EveryList, ShowsTheFirstSixteenAndCountsAll) {
    std::string records;
    for (int i = 0; i < 40; ++i) {
        const std::string text = "<string>title " + std::to_string(i) + "</string>";
        records += "<dict><key>Name</key>" + text + "<key>UUID</key>" + text + "<key>title</key>" + text +
                   "<key>URL</key>" + text + "</dict><dict/>";
    }
    write("<array>" + records + "</array>");
    std::optional<Timeline<EntryContent>> timeline;
    widget->timeline({}, {.family = WidgetFamily::extraLarge}, [&](auto reply) { timeline = *std::move(reply); });
    ASSERT_EQ(timeline->entries.size(), 1U);
    EXPECT_EQ(timeline->entries[0].date, Date{1000});
    EXPECT_EQ(timeline->reload.date, Date{1300});
    EXPECT_THAT(timeline->watches, ElementsAre(list.path().substr(std::string("/home/ada/").size())));
    const std::string view = json(timeline->entries[0].view);
    std::size_t last = 0;
    for (int shown = 0; shown < 17; ++shown) {
        const std::size_t found = view.find("\"title " + std::to_string(shown) + "\"");
        EXPECT_TRUE(shown < 16 ? found > last && found < view.size() : found == std::string::npos) << shown;
        last = found;
    }
    EXPECT_THAT(viewIn(WidgetFamily::small), HasSubstr("\"+36 more\""));
}

TEST_P(EveryList, DeclaresFourFamiliesAndFourPreviews) {
    const auto description = widget->description();
    EXPECT_EQ(description.kind, list.kind);
    EXPECT_EQ(description.displayName, list.title);
    EXPECT_EQ(description.containerBackground, "tertiaryFill");
    EXPECT_THAT(description.families,
                ElementsAre(WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large, WidgetFamily::extraLarge));
    std::vector<std::string> names;
    for (const auto& preview : widget->previews()) {
        names.push_back(preview.name + " " + std::string(familyName(preview.family)));
    }
    const std::string prefix = list.previewPrefix;
    EXPECT_THAT(names, ElementsAre(prefix + "Small small", prefix + "Medium medium", prefix + "Large large",
                                   prefix + "Empty small"));
    EXPECT_THAT(json(widget->preview(2).at(0).view), HasSubstr(list.sample));
    EXPECT_THAT(json(widget->preview(3).at(0).view), HasSubstr(list.empty[1]));
    EXPECT_THAT(json(widget->placeholder({.family = WidgetFamily::large}).view), HasSubstr(list.sample));
    EXPECT_EQ(lists.files.readCount(list.path()), 0);
}

TEST(WorkspaceStore, TakesEachRecordAsWellAsItCan) {
    const std::pair<const char*, std::vector<WorkspaceItem>> rows[]{
        {"{ Name = b; }, { Name = \"\"; }, {}, { Name = b; }", {{.id = "b"}, {.id = ""}, {.id = "b"}}},
        {"{ Name = w; databases = (d); workspace = ({}); Workspace = { windows = ({}); }; }", {{.id = "w"}}},
        {"{ Name = w; workspace = { databases = { a = b; }; windows = 2; }; }", {{.id = "w"}}},
        {"{ Name = w; workspace = { windows = ({}, (), a, b); databases = ({}); }; }",
         {{.id = "w", .databaseCount = 1, .windowCount = 4}}},
    };
    for (const auto& [records, expected] : rows) {
        const testing::StoreFile<WorkspaceStore> file("( " + std::string(records) + " )");
        EXPECT_EQ(file.store.readFromPlist(), expected) << records;
    }
}

TEST(WorkspaceItem, OpensByItsNameAndShowsItsCounts) {
    EXPECT_EQ((WorkspaceItem{.id = "a&b c"}).displayURL().value().absoluteString(),
              "x-foliovault://open-workspace?name=a%26b%20c&widget=workspaces");
    const WorkspaceItem item{.id = "Research", .databaseCount = 3, .windowCount = 1};
    EXPECT_FALSE(item == (WorkspaceItem{.id = "Research", .databaseCount = 3, .windowCount = 2}));
    EXPECT_EQ(item.displaySubtitle(), "3 databases · 1 windows");
    EXPECT_EQ(
        json(WorkspaceDetailRow{item}.body()),
        R"({"type":"padding","top":3,"bottom":3,"child":{"type":"hstack","spacing":8,"children":[)"
        R"({"type":"frame","width":18,"child":{"type":"symbol","symbol":"rectangle.stack","font":{"style":"callout"},"foreground":"secondary"}},)"
        R"({"type":"vstack","alignment":"leading","spacing":1,"children":[)"
        R"({"type":"text","text":"Research","lineLimit":1,"font":{"style":"callout"}},)"
        R"({"type":"hstack","spacing":4,"children":[{"type":"label","symbol":"cylinder.split.1x2","text":"3 databases"},)"
        R"({"type":"text","text":"·"},{"type":"label","symbol":"macwindow","text":"1 windows"}],)"
        R"("font":{"style":"caption2"},"foreground":"secondary"}]},{"type":"spacer"}]}})");
}

} // namespace
} // namespace foliovault
