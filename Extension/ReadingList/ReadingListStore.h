// Reads the application's ReadingList.plist, afresh on every call.
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
// Log category "ReadingListStore". The store has no state: any thread, any number at once.
#pragma once

#include "Extension/ReadingList/ReadingListConfiguration.h"
#include "Extension/ReadingList/ReadingListItem.h"
#include "Extension/Shared/Library.h"
#include "Extension/Shared/ListExcerpt.h"
#include "Extension/Shared/PropertyListFile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace foliovault {

/// What a filter leaves, and what there is without it.
struct ReadingListExcerpt {
    ListExcerpt<ReadingListItem> filtered;
    std::int64_t sourceCount = 0;
    std::int64_t unreadCount = 0;
};

class ReadingListStore {
  public:
    explicit ReadingListStore(const Library& library);

    /// The store on the user's own file.
    static const ReadingListStore& shared();

    /// All items in the file's order; an address that stands there twice makes two items.
    std::vector<ReadingListItem> readFromPlist() const;

    ReadingListExcerpt readExcerpt(ReadingListFilter filter) const;

    /// As `PropertyListFile::watches`.
    std::vector<std::string> watches() const { return file_.watches(); }

  private:
    PropertyListFile file_;
};

} // namespace foliovault
