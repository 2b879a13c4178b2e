// Answers the host's requests for the Reading List widget.
#pragma once

#include "Extension/ReadingList/ReadingListConfiguration.h"
#include "Extension/ReadingList/ReadingListItem.h"
#include "Extension/ReadingList/ReadingListStore.h"
#include "Extension/Shared/ListProvider.h"

#include <cstdint>
#include <vector>

namespace foliovault {

struct ReadingListEntry {
    platform::Date date;
    /// Those to show, of what the filter leaves.
    std::vector<ReadingListItem> items;
    /// How many the filter leaves.
    std::int64_t displayCount = 0;
    /// How many are on the list, and how many of them are unread, whatever the filter.
    std::int64_t sourceCount = 0;
    std::int64_t unreadCount = 0;

    static ReadingListEntry sample();
    static ReadingListEntry read(const ReadingListStore& store, const ReadingListIntent& intent);
};

using ReadingListProvider = ListProvider<ReadingListEntry, ReadingListIntent, ReadingListStore>;

} // namespace foliovault
