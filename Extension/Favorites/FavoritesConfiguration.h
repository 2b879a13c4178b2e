// The choices for a Favorites widget: all favourites, or those of one group.
#pragma once

#include "Extension/Favorites/FavoritesItem.h"
#include "Extension/Favorites/FavoritesStore.h"
#include "Platform/Widgets/Intent.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace foliovault {

/// A favourites group, identified by its name, or all of them. A renamed group is another group.
struct FavoritesGroupOption {
    static constexpr const char* allID = "_all";

    std::string id;

    static FavoritesGroupOption all() { return {allID}; }
    /// Returns "Favorites Group", in the user's language.
    static std::string typeDisplayRepresentation();
    /// Returns the option's title, in the user's language for all groups.
    std::string displayRepresentation() const;

    friend bool operator==(const FavoritesGroupOption&, const FavoritesGroupOption&) = default;
};

/// Finds the groups to choose from.
class FavoritesGroupQuery {
  public:
    explicit FavoritesGroupQuery(const FavoritesStore& store = FavoritesStore::shared()) : store_(&store) {}

    /// Returns one option an identifier, in their order, even if the file has no such group.
    std::vector<FavoritesGroupOption> entitiesFor(std::span<const std::string> identifiers) const;
    /// Returns all, then the file's groups in its order.
    std::vector<FavoritesGroupOption> suggestedEntities() const;
    /// Returns the suggestions whose id contains `text` ignoring case, or for all, whose title does; every suggestion
    /// if `text` is empty.
    std::vector<FavoritesGroupOption> entitiesMatching(std::string_view text) const;
    FavoritesGroupOption defaultResult() const { return FavoritesGroupOption::all(); }

  private:
    const FavoritesStore* store_;
};

struct FavoritesIntent {
    FavoritesGroupOption group = FavoritesGroupOption::all();

    static platform::IntentDescription<FavoritesIntent> description();
    /// Returns whether the item is in the chosen group. All includes favourites without a group.
    bool includes(const FavoritesItem& item) const {
        return group == FavoritesGroupOption::all() || item.groupName == group.id;
    }
};

} // namespace foliovault
