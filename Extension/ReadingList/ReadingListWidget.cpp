#include "Extension/ReadingList/ReadingListWidget.h"

#include "Extension/Shared/ListWidgetBody.h"
#include "Extension/Shared/MessageView.h"

namespace foliovault {

using namespace platform;

View ReadingListEntryView::body(const Environment& environment) const {
    if (entry.items.empty()) {
        return entry.sourceCount == 0 ? EmptyStateView().body() : NoMatchView().body();
    }
    return ListWidgetBody<ReadingListItem>{
        .items = entry.items,
        .displayCount = entry.displayCount,
        .title = "Reading List",
        .subtitle = localizedCount("%lld unread", entry.unreadCount),
        .smallHeader = [this] { return ReadingListSmallHeader{entry.unreadCount}.body(); },
    }
        .body(environment);
}

View ReadingListSmallHeader::body() const {
    return hStack({}, {
                          text(localized("Reading List")).font(headline),
                          spacer(),
                          text(std::to_string(unreadCount))
                              .font(caption.semibold())
                              .foreground(Color::white)
                              .padding({.top = 2, .bottom = 2, .leading = 6, .trailing = 6})
                              .capsuleBackground(Color::blue),
                      });
}

View EmptyStateView::body() const {
    return MessageView{
        .symbol = "text.book.closed", .title = "No Items", .explanation = "Your FOLIOvault reading list is empty."}
        .body();
}

View NoMatchView::body() const {
    return MessageView{.symbol = "checkmark.circle", .symbolForeground = Color::green, .title = "All Read"}.body();
}

std::unique_ptr<Widget> ReadingListWidget::body() const {
    return listWidget<ReadingListEntryView>("ReadingListWidget", provider, "");
}

} // namespace foliovault
