#include "Extension/Favorites/FavoritesViews.h"

#include "Extension/Shared/ItemRows.h"
#include "Extension/Shared/ListWidgetBody.h"
#include "Extension/Shared/MessageView.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Views/Text.h"

namespace foliovault {

using namespace platform;

View FavoritesEntryView::body(const Environment& environment) const {
    if (entry.items.empty()) {
        return FavoritesEmptyView().body();
    }
    return ListWidgetBody<FavoritesItem>{
        .items = entry.items,
        .displayCount = entry.displayCount,
        .title = "Favorites",
        .subtitle = localizedCount("%lld items", entry.displayCount),
        .smallHeader = [] { return text(localized("Favorites")).font(headline); },
        .detailRow = [&](const FavoritesItem& item) { return DetailedItemRow{RowContent::of(item)}.body(environment); },
    }
        .body(environment);
}

View FavoritesEmptyView::body() const {
    return MessageView{
        .symbol = "star", .title = "No Favorites", .explanation = "Add favorites in FOLIOvault to see them here."}
        .body();
}

} // namespace foliovault
