#include "Extension/Favorites/FavoritesWidget.h"

#include "Extension/Shared/ListWidgetBody.h"
#include "Extension/Shared/MessageView.h"

namespace foliovault {

using namespace platform;

View FavoritesEntryView::body(const Environment& environment) const {
    if (entry.items.empty()) {
        return FavoritesEmptyView().body();
    }
    return ListWidgetBody<FavoritesItem>{.items = entry.items, .displayCount = entry.displayCount, .title = "Favorites"}
        .body(environment);
}

View FavoritesEmptyView::body() const {
    return MessageView{
        .symbol = "star", .title = "No Favorites", .explanation = "Add favorites in FOLIOvault to see them here."}
        .body();
}

std::unique_ptr<Widget> FavoritesWidget::body() const {
    return listWidget<FavoritesEntryView>("FavoritesWidget", provider, "Favorites ");
}

} // namespace foliovault
