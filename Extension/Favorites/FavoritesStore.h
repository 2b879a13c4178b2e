// Reads the application's Favorites.plist, afresh on every call.
//
// The file's root is an array of dictionaries, each a favourite or a group of favourites:
//
//   key         of              value
//   "Children"  group           array of dictionaries: the group's favourites; deeper groups are not read
//   "Name"      both            text; without it "Untitled"
//   "Date"      favourite       date, or number of seconds since 2001
//   "Label"     favourite       integer, the colour label
//   "Icon"      favourite       data, an image file's bytes
//   "Path"      database        text, its file
//   "UUID"      record          text, its identifier; with "Type", an integer, and "Location", a text
//   "SIUUID"    smart group     text, its identifier
//
// Log category "FavoritesStore". The store has no state: any thread, any number at once.
#pragma once

#include "Extension/Favorites/FavoritesItem.h"
#include "Extension/Shared/Library.h"
#include "Extension/Shared/ListExcerpt.h"
#include "Extension/Shared/PropertyListFile.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace foliovault {

class FavoritesStore {
  public:
    explicit FavoritesStore(const Library& library);

    /// The store on the user's own file.
    static const FavoritesStore& shared();

    std::optional<platform::PropertyList> loadPlist() const { return file_.load(); }

    /// All favourites in the file's order.
    std::vector<FavoritesItem> readFromPlist() const;

    using GroupFilter = std::function<bool(const std::optional<std::string>& groupName)>;

    /// The favourites of the groups that pass `filter`; one without a group passes by its absence.
    ListExcerpt<FavoritesItem> readExcerpt(const GroupFilter& filter) const;

    /// The names of the groups that have one, in the file's order.
    std::vector<std::string> groupNames() const;

    /// One entry as a favourite of `groupName`, with `untitled` as the name of a nameless one.
    static std::optional<FavoritesItem> parseChild(const platform::PropertyListValue& entry,
                                                   const std::optional<std::string>& groupName,
                                                   const std::string& untitled);

    /// A date as it is, a number as seconds since the reference date, anything else as the distant past.
    static platform::Date parseDate(const std::optional<platform::PropertyListValue>& value);

    /// As `PropertyListFile::watches`.
    std::vector<std::string> watches() const { return file_.watches(); }

  private:
    PropertyListFile file_;
};

} // namespace foliovault
