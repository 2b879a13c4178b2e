// The Reading List widget's pictures.
#pragma once

#include "Extension/ReadingList/ReadingListProvider.h"
#include "Platform/Views/View.h"
#include "Platform/Widgets/Environment.h"

#include <cstdint>

namespace foliovault {

/// The list; where there is nothing to list, whether that is because the list is empty or because all is read.
struct ReadingListEntryView {
    const ReadingListEntry& entry;
    platform::View body(const platform::Environment& environment) const;
};

/// The small family's header: the title, and the number of unread items in a badge, 0 too.
struct ReadingListSmallHeader {
    std::int64_t unreadCount;
    platform::View body() const;
};

/// There is nothing on the reading list.
struct EmptyStateView {
    platform::View body() const;
};

/// There is, and the filter leaves nothing of it.
struct NoMatchView {
    platform::View body() const;
};

} // namespace foliovault
