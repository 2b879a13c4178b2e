#include "Extension/Favorites/FavoritesWidget.h"

#include "Extension/Favorites/FavoritesViews.h"
#include "Extension/Shared/ListWidget.h"

namespace foliovault {

std::unique_ptr<platform::Widget> FavoritesWidget::body() const {
    return listWidget<FavoritesEntryView>(kind, provider,
                                          {.small = "Favorites Small",
                                           .medium = "Favorites Medium",
                                           .large = "Favorites Large",
                                           .empty = "Favorites Empty"});
}

} // namespace foliovault
