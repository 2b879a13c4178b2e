// What the Workspaces widget makes of its file.

#include "Extension/Workspaces/WorkspacesWidget.h"

#include "Tests/Extension/Lists/MemoryLibrary.h"
#include "Tests/Support/ViewText.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

TEST(WorkspaceStore, TakesEachRecordAsWellAsItCan) {
    const std::pair<const char*, std::vector<WorkspaceItem>> rows[]{
        {"{ name = w; }, { Name = (); }", {}},
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

TEST(WorkspaceItem, OpensByItsName) {
    EXPECT_EQ((WorkspaceItem{.id = "Inbox Review"}).displayURL().value().absoluteString(),
              "x-foliovault://open-workspace?name=Inbox%20Review&widget=workspaces");
    for (const char* name : {"", "a&b=c+d", "100 %", "#1?/x", "読書", "line\nbreak"}) {
        EXPECT_EQ(WorkspaceItem{.id = name}.displayURL()->queryItems()->at(0).value, name);
    }
}

TEST(WorkspaceDetailRow, ShowsTheCountsUnderTheName) {
    const WorkspaceItem item{.id = "Research", .databaseCount = 3, .windowCount = 1};
    EXPECT_FALSE(item == (WorkspaceItem{.id = "Research", .databaseCount = 3, .windowCount = 2}));
    EXPECT_EQ(item.displaySubtitle(), "3 databases · 1 windows");
    EXPECT_EQ(
        platform::json(WorkspaceDetailRow{item}.body()),
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
