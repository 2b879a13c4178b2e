// Reads the application's ReadingList.plist.
//
// The file's root is an array of dictionaries, each an item:
//
//   key        value
//   "title"    text, required
//   "URL"      text, required: the address, a URL or not
//   "unread"   boolean; anything else counts as unread
//   "date"     date and nothing else; without it the distant past
//   "type"     integer, a document type's code; without it 0
//   "icon"     data, an image file's bytes
//
// Log category "ReadingListStore".
#pragma once

#include "Extension/ReadingList/ReadingListItem.h"
#include "Extension/Shared/ListStore.h"
#include "Extension/Shared/RecordFields.h"

#include <array>
#include <utility>

namespace foliovault {

class ReadingListStore : public ListStore<ReadingListItem> {
  public:
    explicit ReadingListStore(const Library& library)
        : ListStore(library, library.paths.readingListURL, "ReadingListStore") {}

    /// The store on the user's own file.
    static const ReadingListStore& shared() {
        static const ReadingListStore store(Library::shared());
        return store;
    }

  private:
    void visitItems(const platform::PropertyListValue& record, const Visit& visit) const override {
        static constexpr std::array<std::string_view, 6> keys{"title", "URL", "unread", "date", "type", "icon"};
        const RecordFields<keys> fields(record);
        auto title = fields.string("title");
        auto address = fields.string("URL");
        if (title && address) {
            visit({.id = *std::move(address),
                   .title = *std::move(title),
                   .isUnread = fields.boolean("unread").value_or(true),
                   .date = fields.date("date").value_or(platform::Date::distantPast()),
                   .type = fields.integer("type").value_or(0),
                   .iconData = fields.data("icon")});
        }
    }
};

} // namespace foliovault
