// The Reading List widget: its entries, views and declaration.
#pragma once

#include "Extension/ReadingList/ReadingListConfiguration.h"
#include "Extension/ReadingList/ReadingListItem.h"
#include "Extension/ReadingList/ReadingListStore.h"
#include "Extension/Shared/ListWidget.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace foliovault {

struct ReadingListEntry : ListEntry<ReadingListItem> {
    /// The number of items on the list and of unread ones, before filtering.
    std::int64_t sourceCount = 0;
    std::int64_t unreadCount = 0;

    void add(ReadingListItem item, const ReadingListIntent& intent) {
        ++sourceCount;
        unreadCount += item.isUnread ? 1 : 0;
        ListEntry::add(std::move(item), intent);
    }
};

using ReadingListProvider = ListProvider<ReadingListEntry, ReadingListIntent, ReadingListStore>;

/// The list; without items to show, the view for an empty list or for one without unread items.
struct ReadingListEntryView {
    const ReadingListEntry& entry;
    platform::View body(const platform::Environment& environment) const;
};

/// The small family's header: the title, and the number of unread items in a badge, also 0.
struct ReadingListSmallHeader {
    std::int64_t unreadCount;
    platform::View body() const;
};

/// The list is empty.
struct EmptyStateView {
    platform::View body() const;
};

/// The list has items, but none passes the filter.
struct NoMatchView {
    platform::View body() const;
};

struct ReadingListWidget {
    ReadingListProvider provider;
    std::unique_ptr<platform::Widget> body() const;
};

} // namespace foliovault
