#include "Extension/Favorites/FavoritesProvider.h"

#include "Extension/Shared/DisplayableItem.h"

namespace foliovault {

using namespace platform;

namespace {

constexpr double reloadSeconds = 300;

} // namespace

FavoritesEntry FavoritesProvider::placeholder() const {
    const auto& samples = FavoritesItem::sampleItems();
    return {.date = clock_->now(), .items = samples, .displayCount = static_cast<std::int64_t>(samples.size())};
}

Timeline<FavoritesEntry> FavoritesProvider::timeline(const FavoritesIntent& intent) const {
    Timeline<FavoritesEntry> timeline;
    timeline.entries.push_back(makeEntry(intent));
    timeline.reload = {clock_->now().addingSeconds(reloadSeconds)};
    return timeline;
}

FavoritesEntry FavoritesProvider::makeEntry(const FavoritesIntent& intent) const {
    const std::string& chosen = intent.group.id;
    const auto isChosen = [&chosen](const std::optional<std::string>& groupName) {
        return chosen == FavoritesGroupOption::allID || groupName == chosen;
    };
    auto [items, count] = store_->readExcerpt(isChosen, listEntryItemCap);
    return {.date = clock_->now(), .items = std::move(items), .displayCount = count};
}

} // namespace foliovault
