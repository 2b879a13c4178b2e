#include "Extension/Workspaces/WorkspaceItem.h"

#include "Extension/Shared/DisplayableItem.h"
#include "Extension/Workspaces/WorkspacesViews.h"
#include "Platform/Foundation/URLComponents.h"
#include "Tests/Support/ViewText.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

static_assert(DisplayableItem<WorkspaceItem>);

TEST(WorkspaceItem, OpensByItsName) {
    EXPECT_EQ(WorkspaceItem("Inbox Review", 0, 0).displayURL()->absoluteString(),
              "x-foliovault://open-workspace?name=Inbox%20Review&widget=workspaces");
    for (const char* name : {"", "a&b=c", "100 %", "#1?/x", "読書", "a+b", "e\u0301", "line\nbreak"}) {
        const auto url = WorkspaceItem(name, 0, 0).displayURL();
        ASSERT_TRUE(url) << name;
        const auto items = platform::URLComponents::of(*url)->queryItems();
        ASSERT_TRUE(items && items->size() == 2U) << name;
        EXPECT_EQ((*items)[0].name, "name");
        EXPECT_EQ((*items)[0].value, name);
        EXPECT_EQ((*items)[1].value, "workspaces");
    }
}

TEST(WorkspaceItem, CountsInWordsThatStayPlural) {
    EXPECT_EQ(WorkspaceItem("w", 3, 2).displaySubtitle(), "3 databases · 2 windows");
    EXPECT_EQ(WorkspaceItem("w", 1, 0).displaySubtitle(), "1 databases · 0 windows");
}

TEST(WorkspaceItem, IsEqualToOneOfTheSameCountsAlone) {
    EXPECT_EQ(WorkspaceItem("w", 1, 2), WorkspaceItem("w", 1, 2));
    for (const WorkspaceItem& other : {WorkspaceItem("v", 1, 2), WorkspaceItem("w", 2, 2), WorkspaceItem("w", 1, 1)}) {
        EXPECT_FALSE(other == WorkspaceItem("w", 1, 2));
        EXPECT_NE(std::hash<WorkspaceItem>{}(other), std::hash<WorkspaceItem>{}(WorkspaceItem("w", 1, 2)));
    }
}

TEST(WorkspaceDetailRow, ShowsTheCountsUnderTheName) {
    const WorkspaceItem item("Research", 3, 1);
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
