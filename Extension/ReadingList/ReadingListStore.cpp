#include "Extension/ReadingList/ReadingListStore.h"

#include "Extension/Shared/RecordFields.h"

#include <array>
#include <utility>

namespace foliovault {

using namespace platform;

const ReadingListStore& ReadingListStore::shared() {
    static const ReadingListStore store(Library::shared());
    return store;
}

std::vector<ReadingListItem> ReadingListStore::readFromPlist() const {
    return convertEach([](const PropertyListValue& record) -> std::optional<ReadingListItem> {
        static constexpr std::array<std::string_view, 6> keys{"title", "URL", "unread", "date", "type", "icon"};
        const RecordFields fields(record, keys);
        auto title = fields.string("title");
        auto address = fields.string("URL");
        if (!title || !address) {
            return std::nullopt;
        }
        return ReadingListItem{.id = *std::move(address),
                               .title = *std::move(title),
                               .isUnread = fields.boolean("unread").value_or(true),
                               .date = fields.date("date").value_or(Date::distantPast()),
                               .type = fields.integer("type").value_or(0),
                               .iconData = fields.data("icon")};
    });
}

} // namespace foliovault
