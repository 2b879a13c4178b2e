#include "Extension/ReadingList/ReadingListWidget.h"

#include "Extension/ReadingList/ReadingListViews.h"
#include "Extension/Shared/ListWidget.h"

namespace foliovault {

std::unique_ptr<platform::Widget> ReadingListWidget::body() const {
    return listWidget<ReadingListEntryView>(kind, provider,
                                            {.small = "Small", .medium = "Medium", .large = "Large", .empty = "Empty"});
}

} // namespace foliovault
