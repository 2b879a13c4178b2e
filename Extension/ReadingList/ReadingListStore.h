// Reads the application's ReadingList.plist.
//
// The file's root is an array of dictionaries, each an item:
//
//   key        value
//   "title"    text; without it the record is no item
//   "URL"      text, the address, a URL or not; without it the record is no item
//   "unread"   boolean; anything else counts as unread
//   "date"     date and nothing else; without it the distant past
//   "type"     integer, a document type's code; without it 0
//   "icon"     data, an image file's bytes
//
// Log category "ReadingListStore".
#pragma once

#include "Extension/ReadingList/ReadingListItem.h"
#include "Extension/Shared/ListStore.h"

#include <vector>

namespace foliovault {

class ReadingListStore : public ListStore {
  public:
    explicit ReadingListStore(const Library& library)
        : ListStore(library, library.paths.readingListURL, "ReadingListStore") {}

    /// The store on the user's own file.
    static const ReadingListStore& shared();

    /// Returns all items in the file's order; an address that stands there twice makes two items.
    std::vector<ReadingListItem> readFromPlist() const;
};

} // namespace foliovault
