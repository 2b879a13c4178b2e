#include "Extension/Favorites/FavoritesConfiguration.h"

#include "Platform/Foundation/Localization.h"

namespace foliovault {

using namespace platform;

std::string FavoritesGroupOption::typeDisplayRepresentation() {
    return localized("Favorites Group");
}

std::string FavoritesGroupOption::displayRepresentation() const {
    return id == allID ? localized("All") : id;
}

std::vector<FavoritesGroupOption> FavoritesGroupQuery::entitiesFor(std::span<const std::string> identifiers) const {
    std::vector<FavoritesGroupOption> options;
    options.reserve(identifiers.size());
    for (const std::string& identifier : identifiers) {
        options.push_back({identifier});
    }
    return options;
}

std::vector<FavoritesGroupOption> FavoritesGroupQuery::suggestedEntities() const {
    auto options = entitiesFor(store_->groupNames());
    options.insert(options.begin(), FavoritesGroupOption::all());
    return options;
}

std::vector<FavoritesGroupOption> FavoritesGroupQuery::entitiesMatching(std::string_view text) const {
    auto options = suggestedEntities();
    std::erase_if(options, [text](const FavoritesGroupOption& option) {
        return !text.empty() && !localizedCaseInsensitiveContains(option.id, text) &&
               !localizedCaseInsensitiveContains(option.displayRepresentation(), text);
    });
    return options;
}

IntentDescription<FavoritesIntent> FavoritesIntent::description() {
    return {.title = localized("Favorites"),
            .description = localized("Shows your FOLIOvault favorites on the desktop."),
            .parameters = {entityParameter(&FavoritesIntent::group, FavoritesGroupQuery(), "group", localized("Group"),
                                           FavoritesGroupOption::typeDisplayRepresentation())}};
}

} // namespace foliovault
