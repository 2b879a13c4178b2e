// Reads the application's Favorites.plist.
//
// The file's root is an array of dictionaries, each a favourite or a group of favourites:
//
//   key         of              value
//   "Children"  group           array of dictionaries: the group's favourites; deeper groups are not read
//   "Name"      both            text; by default "Untitled"
//   "Date"      favourite       date, or number of seconds since 2001
//   "Label"     favourite       integer, the colour label
//   "Icon"      favourite       data, an image file's bytes
//   "Path"      database        text, its file
//   "UUID"      record          text, its identifier; with "Type", an integer, and "Location", a text
//   "SIUUID"    smart group     text, its identifier
//
// Log category "FavoritesStore".
#pragma once

#include "Extension/Favorites/FavoritesItem.h"
#include "Extension/Shared/ListStore.h"

#include <optional>
#include <string>
#include <vector>

namespace foliovault {

class FavoritesStore : public ListStore<FavoritesItem> {
  public:
    explicit FavoritesStore(const Library& library)
        : ListStore(library, library.paths.favoritesURL, "FavoritesStore") {}

    /// The store on the user's own file.
    static const FavoritesStore& shared();

    /// Returns the names of the groups with a name, in the file's order.
    std::vector<std::string> groupNames() const;

    /// Returns the entry as a favourite of `groupName`.
    std::optional<FavoritesItem> parseChild(const platform::PropertyListValue& entry,
                                            const std::optional<std::string>& groupName) const;

    /// Returns a date as it is, a number as seconds since the reference date, anything else as the distant past.
    static platform::Date parseDate(const std::optional<platform::PropertyListValue>& value);

  private:
    void visitItems(const platform::PropertyListValue& record, const Visit& visit) const override;
};

} // namespace foliovault
