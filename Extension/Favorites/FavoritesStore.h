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
// A file that cannot be read or parsed gives no favourites and a line in the log, category "FavoritesStore"; an entry
// that is no favourite is passed over. The store has no state: any thread, any number at once.
#pragma once

#include "Extension/Favorites/FavoritesItem.h"
#include "Extension/Shared/FOLIOvaultPaths.h"
#include "Extension/Shared/PropertyListFile.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace foliovault {

/// The first favourites of a selection, and how many it has in all.
struct FavoritesExcerpt {
    std::vector<FavoritesItem> items;
    std::int64_t count = 0;
};

class FavoritesStore {
  public:
    FavoritesStore(const FOLIOvaultPaths& paths, const platform::FileSystem& files, const platform::Log& log);

    /// The store on the user's own file.
    static const FavoritesStore& shared();

    std::optional<platform::PropertyList> loadPlist() const;

    /// All favourites in the file's order.
    std::vector<FavoritesItem> readFromPlist() const;

    using GroupFilter = std::function<bool(const std::optional<std::string>& groupName)>;

    /// The first `cap` favourites of the groups that pass `filter`, and the number of all of them; a favourite without
    /// a group passes by its absence. Costs memory for the items it answers alone, however long the file.
    FavoritesExcerpt readExcerpt(const GroupFilter& filter, std::size_t cap) const;

    /// The names of the groups that have one, in the file's order.
    std::vector<std::string> groupNames() const;

    /// One entry as a favourite of `groupName`, with `untitled` as the name of a nameless one.
    static std::optional<FavoritesItem> parseChild(const platform::PropertyListValue& entry,
                                                   const std::optional<std::string>& groupName,
                                                   const std::string& untitled);

    /// A date as it is, a number as seconds since the reference date, anything else as the distant past.
    static platform::Date parseDate(const std::optional<platform::PropertyListValue>& value);

  private:
    PropertyListFile file_;
};

} // namespace foliovault
