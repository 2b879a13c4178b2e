#include "Extension/ReadingList/ReadingListStore.h"

#include "Extension/Shared/RecordFields.h"

#include <array>
#include <span>
#include <utility>

namespace foliovault {

using namespace platform;

namespace {

/// The keys of a record, those first that decide whether it is an item and is counted.
enum Key : std::size_t { title, address, unread, countedKeyCount, date = countedKeyCount, type, icon, keyCount };
constexpr std::array<std::string_view, keyCount> keys{"title", "URL", "unread", "date", "type", "icon"};

template <std::size_t count>
bool isUnread(const RecordFields<count>& fields) {
    return fields.boolean(unread).value_or(true);
}

std::optional<ReadingListItem> itemOf(const PropertyListValue& record) {
    const RecordFields fields(record, std::span(keys));
    auto itemTitle = fields.string(title);
    auto urlString = fields.string(address);
    if (!itemTitle || !urlString) {
        return std::nullopt;
    }
    return ReadingListItem(*std::move(urlString), *std::move(itemTitle), isUnread(fields),
                           fields.date(date).value_or(Date::distantPast()), fields.integer(type).value_or(0),
                           fields.data(icon));
}

} // namespace

ReadingListStore::ReadingListStore(const Library& library)
    : file_(library, library.paths.readingListURL, "ReadingListStore") {}

const ReadingListStore& ReadingListStore::shared() {
    static const ReadingListStore store(Library::shared());
    return store;
}

std::vector<ReadingListItem> ReadingListStore::readFromPlist() const {
    return file_.convertEach(itemOf);
}

ReadingListExcerpt ReadingListStore::readExcerpt(ReadingListFilter filter) const {
    ReadingListExcerpt excerpt;
    file_.forEachRecord([&](const PropertyListValue& record) {
        const RecordFields fields(record, std::span(keys).first<countedKeyCount>());
        if (!fields.hasString(title) || !fields.hasString(address)) {
            return;
        }
        ++excerpt.sourceCount;
        excerpt.unreadCount += isUnread(fields) ? 1 : 0;
        if (filter == ReadingListFilter::all || isUnread(fields)) {
            excerpt.filtered.add([&] { return itemOf(record); });
        }
    });
    return excerpt;
}

} // namespace foliovault
