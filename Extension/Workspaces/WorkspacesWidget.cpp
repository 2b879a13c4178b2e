#include "Extension/Workspaces/WorkspacesWidget.h"

#include "Extension/Shared/ListWidgetBody.h"
#include "Extension/Shared/MessageView.h"
#include "Platform/Views/Symbol.h"

namespace foliovault {

using namespace platform;

View WorkspacesEntryView::body(const Environment& environment) const {
    if (entry.items.empty()) {
        return WorkspacesEmptyView().body();
    }
    return ListWidgetBody<WorkspaceItem>{
        .items = entry.items,
        .displayCount = entry.displayCount,
        .title = "Workspaces",
        .detailRow = [](const WorkspaceItem& item) { return WorkspaceDetailRow{item}.body(); },
    }
        .body(environment);
}

View WorkspaceDetailRow::body() const {
    const View counts = hStack({.spacing = 4},
                               {
                                   label("cylinder.split.1x2", item.databases()),
                                   text("·"),
                                   label("macwindow", item.windows()),
                               })
                            .font(caption2)
                            .foreground(secondary);
    return hStack({.spacing = 8},
                  {
                      symbol(WorkspaceItem::icon).font(callout).foreground(secondary).frame({.width = 18}),
                      vStack({.alignment = HorizontalAlignment::leading, .spacing = 1},
                             {text(item.id).font(callout).lineLimit(1), counts}),
                      spacer(),
                  })
        .padding({.top = 3, .bottom = 3});
}

View WorkspacesEmptyView::body() const {
    return MessageView{.symbol = WorkspaceItem::icon,
                       .title = "No Workspaces",
                       .explanation = "Create workspaces in FOLIOvault to see them here."}
        .body();
}

std::unique_ptr<Widget> WorkspacesWidget::body() const {
    return listWidget<WorkspacesEntryView>("WorkspacesWidget", provider, "Workspaces ");
}

} // namespace foliovault
