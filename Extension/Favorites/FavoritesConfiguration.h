// What the user may choose for a Favorites widget: all favourites, or those of one group.
#pragma once

#include "Extension/Favorites/FavoritesStore.h"
#include "Platform/Widgets/Intent.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace foliovault {

/// A favourites group, remembered by its name, or all of them. A group that was renamed is another group.
struct FavoritesGroupOption {
    static constexpr const char* allID = "_all";

    std::string id;

    static FavoritesGroupOption all() { return {allID}; }
    /// "Favorites Group", in the user's language.
    static std::string typeDisplayRepresentation();
    /// The option's title, in the user's language for all of them.
    std::string displayRepresentation() const;

    friend bool operator==(const FavoritesGroupOption&, const FavoritesGroupOption&) = default;
};

/// Finds the groups to choose from.
class FavoritesGroupQuery {
  public:
    explicit FavoritesGroupQuery(const FavoritesStore& store = FavoritesStore::shared()) : store_(&store) {}

    /// One option an identifier, in their order, whether there is such a group or not.
    std::vector<FavoritesGroupOption> entitiesFor(std::span<const std::string> identifiers) const;
    /// All, then the file's groups in its order.
    std::vector<FavoritesGroupOption> suggestedEntities() const;
    /// The suggestions whose id, or the title for all, contains `text` ignoring case; every one where `text` is empty.
    std::vector<FavoritesGroupOption> entitiesMatching(std::string_view text) const;
    FavoritesGroupOption defaultResult() const { return FavoritesGroupOption::all(); }

  private:
    const FavoritesStore* store_;
};

struct FavoritesIntent {
    FavoritesGroupOption group = FavoritesGroupOption::all();

    static platform::IntentDescription<FavoritesIntent> description();
};

} // namespace foliovault
