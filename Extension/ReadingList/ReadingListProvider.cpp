#include "Extension/ReadingList/ReadingListProvider.h"

#include <utility>

namespace foliovault {

ReadingListEntry ReadingListEntry::sample() {
    const auto& samples = ReadingListItem::sampleItems();
    const auto count = static_cast<std::int64_t>(samples.size());
    return {.date = {}, .items = samples, .displayCount = count, .sourceCount = count, .unreadCount = 3};
}

ReadingListEntry ReadingListEntry::read(const ReadingListStore& store, const ReadingListIntent& intent) {
    auto [filtered, sourceCount, unreadCount] = store.readExcerpt(intent.filter);
    return {.date = {},
            .items = std::move(filtered.items),
            .displayCount = filtered.count,
            .sourceCount = sourceCount,
            .unreadCount = unreadCount};
}

} // namespace foliovault
