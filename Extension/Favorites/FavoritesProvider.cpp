#include "Extension/Favorites/FavoritesProvider.h"

namespace foliovault {

FavoritesEntry FavoritesEntry::sample() {
    const auto& samples = FavoritesItem::sampleItems();
    return {.date = {}, .items = samples, .displayCount = static_cast<std::int64_t>(samples.size())};
}

FavoritesEntry FavoritesEntry::read(const FavoritesStore& store, const FavoritesIntent& intent) {
    const std::string& chosen = intent.group.id;
    auto [items, count] = store.readExcerpt([&chosen](const std::optional<std::string>& groupName) {
        return chosen == FavoritesGroupOption::allID || groupName == chosen;
    });
    return {.date = {}, .items = std::move(items), .displayCount = count};
}

} // namespace foliovault
